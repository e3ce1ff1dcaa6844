#include "OpenSGExt/UVConstraintAttachment.h"

namespace osg
{

FieldContainerType& UVConstraintAttachmentBase::getClassType()
{
    static auto& type =
        *new FieldContainerType("UVConstraintAttachmentBase", &Attachment::getClassType(), nullptr,
                                {containerField<&UVConstraintAttachmentBase::_edgesU>(
                                     "edgesU", "SFGeoIndicesPtr", EdgesUFieldMask),
                                 containerField<&UVConstraintAttachmentBase::_edgesV>(
                                     "edgesV", "SFGeoIndicesPtr", EdgesVFieldMask)});
    return type;
}

const FieldContainerType& UVConstraintAttachmentBase::_type =
    UVConstraintAttachment::getClassType();

UVConstraintAttachmentPtr UVConstraintAttachmentBase::create()
{
    return ConcreteContainer<UVConstraintAttachment, UVConstraintAttachmentBase>::create();
}

FieldContainerType& UVConstraintAttachment::getClassType()
{
    static auto& type =
        *new FieldContainerType("UVConstraintAttachment",
                                &UVConstraintAttachmentBase::getClassType(), &createContainer, {});
    return type;
}

GeoIndicesPtr UVConstraintAttachment::getEdgesField(unsigned direction, FieldMask& mask) const
{
    mask = direction == 0 ? EdgesUFieldMask : EdgesVFieldMask;
    return direction == 0 ? getEdgesU() : getEdgesV();
}

GeoIndicesPtr UVConstraintAttachment::createEdgesField(unsigned direction)
{
    const GeoIndicesPtr edges = GeoIndicesUI32::create();
    (direction == 0 ? _edgesU : _edgesV) = edges;
    return edges;
}

bool UVConstraintAttachment::hasConstrainedEdges() const
{
    const auto hasEdges = [](const GeoIndicesPtr& edges) { return edges && edges->getSize() >= 2; };
    return hasEdges(getEdgesU()) || hasEdges(getEdgesV());
}

} // namespace osg

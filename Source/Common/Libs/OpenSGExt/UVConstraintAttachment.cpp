#include "OpenSGExt/UVConstraintAttachment.h"

#include "OpenSG/Geometry.h"
#include "OpenSGExt/UVConstraintsTracker.h"

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

void UVConstraintAttachment::changed(FieldMask mask, unsigned origin)
{
    for (const Ptr<AttachmentContainer>& parent : getParents())
        if (const auto geometry = dcast<Geometry>(parent))
            UVConstraintsTracker::the()->noteChange(geometry, (mask & EdgesUFieldMask).any(),
                                                    (mask & EdgesVFieldMask).any());
    ConcreteContainer::changed(mask, origin);
}

} // namespace osg

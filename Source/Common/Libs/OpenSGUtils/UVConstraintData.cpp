#include "OpenSGUtils/UVConstraintData.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSGExt/UVConstraintAttachment.h"

namespace
{

constexpr unsigned int directionU = 0;
constexpr unsigned int directionV = 1;

osg::UVConstraintAttachmentPtr attachmentOf(const osg::GeometryPtr& geometry)
{
    return osg::dcast<osg::UVConstraintAttachment>(
        geometry->findAttachment(osg::UVConstraintAttachment::_type));
}

std::vector<unsigned int> valuesOf(const osg::GeoIndicesPtr& edges)
{
    return edges ? edges->getValues() : std::vector<unsigned int>();
}

osg::UVConstraintAttachmentPtr attachNew(const osg::GeometryPtr& geometry)
{
    const osg::UVConstraintAttachmentPtr attachment = osg::UVConstraintAttachmentBase::create();
    geometry->addAttachment(attachment);
    osg::notifyChanged(geometry, osg::Geometry::AttachmentsFieldMask);
    return attachment;
}

void detach(const osg::GeometryPtr& geometry, const osg::UVConstraintAttachmentPtr& attachment)
{
    geometry->subAttachment(attachment);
    osg::notifyChanged(geometry, osg::Geometry::AttachmentsFieldMask);
}

void writeEdges(osg::UVConstraintAttachment& attachment, unsigned int direction,
                const std::vector<unsigned int>& edges)
{
    osg::FieldMask mask;
    osg::GeoIndicesPtr field = attachment.getEdgesField(direction, mask);
    if (!field && edges.empty())
        return;
    if (!field)
        field = attachment.createEdgesField(direction);
    field->setValues(edges);
    osg::notifyChanged(field, osg::FieldContainerPtr(&attachment), mask);
}

} // namespace

std::vector<UVConstraintData> getUVConstraints(const osg::GeometryPtr& geometry)
{
    if (!geometry)
        return {};
    const osg::UVConstraintAttachmentPtr attachment = attachmentOf(geometry);
    if (!attachment)
        return {UVConstraintData()};
    return {{valuesOf(attachment->getEdgesU()), valuesOf(attachment->getEdgesV())}};
}

void setUVConstraints(const osg::GeometryPtr& geometry,
                      const std::vector<UVConstraintData>& constraints)
{
    if (!geometry || constraints.empty())
        return;
    const UVConstraintData& data = constraints.front();
    osg::UVConstraintAttachmentPtr attachment = attachmentOf(geometry);
    if (!attachment && data == UVConstraintData())
        return;
    if (!attachment)
        attachment = attachNew(geometry);
    writeEdges(*attachment, directionU, data.edgesU);
    writeEdges(*attachment, directionV, data.edgesV);
    if (!attachment->hasConstrainedEdges())
        detach(geometry, attachment);
}

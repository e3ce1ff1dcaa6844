#include "OpenSGUtils/UVConstraintData.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSGExt/UVConstraintAttachment.h"

#include <algorithm>
#include <initializer_list>

namespace
{

constexpr unsigned int directionU = 0;
constexpr unsigned int directionV = 1;

osg::UVConstraintAttachmentPtr attachmentOf(const osg::GeometryPtr& geometry)
{
    return osg::dcast<osg::UVConstraintAttachment>(
        geometry->findAttachment(osg::UVConstraintAttachment::_type));
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

/// The edges of one direction.
struct DirectedEdges
{
    unsigned int direction;
    const std::vector<unsigned int>& edges;
};

/// False where there was nothing to write and no list to write it to.
bool writeEdges(osg::UVConstraintAttachment& attachment, const DirectedEdges& given)
{
    osg::FieldMask mask;
    osg::GeoIndicesPtr field = attachment.getEdgesField(given.direction, mask);
    if (!field && given.edges.empty())
        return false;
    if (!field)
        field = attachment.createEdgesField(given.direction);
    field->setValues(given.edges);
    osg::notifyChanged(field, osg::FieldContainerPtr(&attachment), mask);
    return true;
}

/// Writes some directions; the attachment comes with the first edge and goes with the last.
void writeConstraints(const osg::GeometryPtr& geometry, std::initializer_list<DirectedEdges> lists)
{
    const bool hasEdges = std::any_of(lists.begin(), lists.end(), [](const DirectedEdges& given) {
        return !given.edges.empty();
    });
    osg::UVConstraintAttachmentPtr attachment = attachmentOf(geometry);
    if (!attachment && !hasEdges)
        return;
    if (!attachment)
        attachment = attachNew(geometry);
    bool isWritten = false;
    for (const DirectedEdges& given : lists)
        isWritten = writeEdges(*attachment, given) || isWritten;
    if (isWritten && !attachment->hasConstrainedEdges())
        detach(geometry, attachment);
}

} // namespace

std::vector<UVConstraintData> getUVConstraints(const osg::GeometryPtr& geometry)
{
    if (!geometry)
        return {};
    return {{getUVConstraints(geometry, directionU), getUVConstraints(geometry, directionV)}};
}

void setUVConstraints(const osg::GeometryPtr& geometry,
                      const std::vector<UVConstraintData>& constraints)
{
    if (!geometry || constraints.empty())
        return;
    const UVConstraintData& data = constraints.front();
    writeConstraints(geometry, {{directionU, data.edgesU}, {directionV, data.edgesV}});
}

std::vector<unsigned int> getUVConstraints(const osg::GeometryPtr& geometry, unsigned int direction)
{
    const osg::UVConstraintAttachmentPtr attachment =
        geometry ? attachmentOf(geometry) : osg::NullFC;
    if (!attachment)
        return {};
    osg::FieldMask mask;
    const osg::GeoIndicesPtr edges = attachment->getEdgesField(direction, mask);
    return edges ? edges->getValues() : std::vector<unsigned int>();
}

void setUVConstraints(const osg::GeometryPtr& geometry, unsigned int direction,
                      const std::vector<unsigned int>& edges)
{
    if (geometry)
        writeConstraints(geometry, {{direction, edges}});
}

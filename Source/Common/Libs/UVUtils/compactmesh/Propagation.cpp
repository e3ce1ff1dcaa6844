#include "OpenSG/ChangeNotice.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/compactmesh/TriangleLinks.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/kyTopologyBridge.h"

#include <algorithm>

namespace
{

using Ids = std::vector<unsigned int>;

/// The F ids of each compact id, ascending. Lists that are there keep their memory.
void listFIds(const Ids& compactIdOfVertex, std::vector<Ids>& fIdsOfCompact,
              unsigned int compactCount)
{
    for (Ids& fIds : fIdsOfCompact)
        fIds.clear();
    fIdsOfCompact.resize(compactCount);
    for (unsigned int f = 0; f < compactIdOfVertex.size(); ++f)
        fIdsOfCompact[compactIdOfVertex[f]].push_back(f);
}

void writeSoleLength(const osg::GeoPLengthsPtr& lengths, unsigned int indexCount)
{
    if (!lengths || lengths->getSize() != 1)
        return;
    lengths->setValue(indexCount, 0);
    osg::notifyChanged(lengths, osg::FieldMask::all());
}

} // namespace

void CompactShellMesh::mapChanged(const osg::GeometryPtr& /*geometry*/, const osg::NodePtr& node,
                                  TopologyOpOutData* out)
{
    sortVertBuffCompactGeom(out);
    const auto positions = osg::dcast<osg::GeoPositions3f>(compactGeometry_->getPositions());
    const auto indices = osg::dcast<osg::GeoIndicesUI32>(compactGeometry_->getIndices());
    if (!positions || !indices || positions->getSize() == 0 || indices->getSize() == 0)
        return;

    const std::vector<ActiveSurface> surfaces = activeSurfaces(node);
    auto links = linkThroughTriangles(surfaces, *compactGeometry_, faceMapping_, slot_);
    if (!links) {
        // The surfaces are others than those that the tables tell of; only a build can help.
        touch();
        return;
    }
    vertFToC_ = std::move(*links);
    listFIds(vertFToC_, vertCToF_, positions->getSize());

    if (out)
        *out->prevFaceMapping = faceMapping_;
    sortAndBuildFaceMappings(surfaces);
    if (out)
        *out->nextFaceMapping = faceMapping_;

    indices->resize(static_cast<unsigned int>(facesF_.size()));
    std::transform(facesF_.begin(), facesF_.end(), indices->getData(),
                   [this](unsigned int f) { return vertFToC_[f]; });
    osg::notifyChanged(indices, osg::FieldMask::all());
    writeSoleLength(compactGeometry_->getLengths(), indices->getSize());
    osg::notifyChanged(compactGeometry_, osg::FieldMask::all());
    if (out)
        *out->nextIndices = compactGeometry_->getIndices()->clone();
}

void CompactShellMesh::applySavedMapping(const kyTopologyData* data)
{
    if (data)
        faceMapping_ = data->faceMapping;
}

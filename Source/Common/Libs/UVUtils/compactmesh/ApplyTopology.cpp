#include "OpenSG/ChangeNotice.h"
#include "OpenSGUtils/kyGeoShuffle.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/compactmesh/VertexLinks.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/kyTopologyBridge.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <span>

namespace
{

/// Rearranges the vertices of one geometry and gives it other indices: a clone, so that the record
/// can be replayed again.
void replay(const osg::GeometryPtr& geometry, const std::vector<unsigned int>& shuffle,
            const osg::GeoIndicesPtr& indices)
{
    kyGeoShuffle::shuffleProperties(geometry, shuffle.data(),
                                    static_cast<unsigned int>(shuffle.size()), nullptr, 0, true);
    if (indices)
        geometry->setIndices(indices->clone());
    osg::notifyChanged(geometry, osg::FieldMask::all());
}

void replayChild(const osg::GeometryPtr& surface, unsigned int child, const kyTopologyData& data)
{
    const bool isRecorded = child < data.childShuffles.size() && child < data.childIndices.size() &&
                            !data.childShuffles[child].empty() && data.childIndices[child];
    if (isRecorded)
        replay(surface, data.childShuffles[child], data.childIndices[child]);
    // Constraints stand for themselves: a surface can have them without a change of its own.
    if (child < data.childUVConstraints.size())
        setUVConstraints(surface, data.childUVConstraints[child]);
}

bool areBelow(std::span<const unsigned int> ids, std::size_t end)
{
    return std::all_of(ids.begin(), ids.end(), [end](unsigned int id) { return id < end; });
}

/// Does the record name vertices of the mesh alone, and its triangles none but those that it makes?
/// A mesh that was built anew since the record was made can have welded other vertices.
bool fits(const kyTopologyData& data, const osg::Geometry& mesh)
{
    const unsigned int vertexCount = mesh.getPositions() ? mesh.getPositions()->getSize() : 0;
    const osg::GeoIndicesPtr indices = data.indices ? data.indices.get() : mesh.getIndices();
    return areBelow(data.shuffle, vertexCount) &&
           (!indices || indices->getEndOfIds() <= data.shuffle.size());
}

void replayThroughMesh(const CompactMeshScope& scope, const osg::GeometryPtr& geometry,
                       const osg::NodePtr& node, const kyTopologyData& data)
{
    CompactShellMesh& mesh = *scope.getMesh();
    const bool fitsMesh = fits(data, *mesh.getGeomPtr());
    if (fitsMesh)
        replay(mesh.getGeomPtr(), data.shuffle, data.indices);
    for (const ActiveSurface& surface : usableSurfaces(node))
        replayChild(surface.geometry, surface.childIndex, data);
    mesh.applySavedMapping(&data);
    if (fitsMesh)
        mesh.mapChanged(geometry, node, nullptr);
    if (!fitsMesh || !agreeInPosition(usableSurfaces(node), *mesh.getGeomPtr(), mesh.getVertFToC()))
        mesh.touch();
}

} // namespace

void kyUVUtils::applyTopology(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                              kyUVTypes::UVSet set, void* data)
{
    const auto* record = static_cast<const kyTopologyData*>(data);
    if (!isValidGeometry(geometry, node, false) || !record || record->shuffle.empty())
        return;
    if (!useCMesh(geometry) || record->childShuffles.empty() || record->childIndices.empty()) {
        replay(geometry, record->shuffle, record->indices);
        setUVConstraints(geometry, record->uvConstraints);
        return;
    }
    const CompactMeshScope scope(geometry, node, set);
    if (scope.getMesh())
        replayThroughMesh(scope, geometry, node, *record);
}

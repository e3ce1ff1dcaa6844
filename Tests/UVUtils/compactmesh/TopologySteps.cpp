#include "UVUtils/compactmesh/TopologySteps.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSGUtils/kyGeoShuffle.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/compactmesh/WeldKey.h"
#include "UVUtils/editing/IslandReference.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/kyUVUtils.h"

#include <rapidcheck.h>

#include <algorithm>
#include <array>
#include <map>
#include <numeric>
#include <set>

namespace steps
{

namespace
{

using Corners = std::array<unsigned int, 3>;

unsigned int sizeOf(const Ids& ids)
{
    return static_cast<unsigned int>(ids.size());
}

Ids indicesOf(const osg::GeometryPtr& geometry)
{
    return geometry->getIndices()->getValues();
}

/// Which triangle of the mesh each triangle of the surfaces is.
Ids meshTriangles(const CompactShellMesh& mesh, const osg::NodePtr& shell)
{
    std::map<Corners, unsigned int> triangleOfCorners;
    const Ids meshIds = indicesOf(mesh.getGeomPtr());
    for (unsigned int i = 0; i < meshIds.size(); i += 3)
        triangleOfCorners[{meshIds[i], meshIds[i + 1], meshIds[i + 2]}] = i / 3;
    Ids ids;
    for (const unsigned int id : trianglesOf(shell))
        ids.push_back(mesh.mapVertFToC(id));
    Ids triangles;
    for (std::size_t i = 0; i < ids.size(); i += 3)
        triangles.push_back(triangleOfCorners.at({ids[i], ids[i + 1], ids[i + 2]}));
    return triangles;
}

/// One label for the corners at a vertex that hang together through edges between triangles of
/// which both are lifted or none.
Ids fanOfCorner(const Ids& indices, const std::vector<bool>& isLifted)
{
    Ids joined; // corners by threes
    std::map<std::pair<Edge, bool>, unsigned int> firstCornerOfEdge;
    const auto nextOf = [](unsigned int corner) {
        return corner % 3 == 2 ? corner - 2 : corner + 1;
    };
    for (unsigned int corner = 0; corner < indices.size(); ++corner) {
        const unsigned int next = nextOf(corner);
        const Edge edge(indices[corner], indices[next]);
        const unsigned int other =
            firstCornerOfEdge.emplace(std::pair(edge, isLifted[corner / 3]), corner).first->second;
        const bool isSameWay = indices[corner] == indices[other];
        const unsigned int there = isSameWay ? other : nextOf(other);
        const unsigned int nextThere = isSameWay ? nextOf(other) : other;
        joined.insert(joined.end(), {corner, there, there, next, nextThere, nextThere});
    }
    return islandsBySpreading(joined, sizeOf(indices));
}

/// Gives each label at a vertex a vertex of its own, on one geometry: the first keeps the number.
void splitByLabels(const osg::GeometryPtr& geometry, const Ids& labelOfCorner,
                   TopologyOpOutData& out)
{
    Ids indices = indicesOf(geometry);
    const unsigned int oldCount = geometry->getPositions()->getSize();
    std::map<std::pair<unsigned int, unsigned int>, unsigned int> vertexOfLabel;
    std::vector<bool> isTaken(oldCount, false);
    Ids sources;
    Ids targets;
    for (std::size_t corner = 0; corner < indices.size(); ++corner) {
        const unsigned int vertex = indices[corner];
        const auto [entry, isNew] =
            vertexOfLabel.emplace(std::pair(vertex, labelOfCorner[corner]), vertex);
        if (isNew && isTaken[vertex]) {
            entry->second = oldCount + sizeOf(sources);
            targets.push_back(entry->second);
            sources.push_back(vertex);
        }
        isTaken[vertex] = true;
        indices[corner] = entry->second;
    }
    const unsigned int newCount = oldCount + sizeOf(sources);
    kyGeoShuffle::shuffleProperties(geometry, sources.data(), sizeOf(sources), targets.data(),
                                    newCount, false);
    out.storeShuffle(sources, targets, oldCount, newCount);
    *out.prevIndices = geometry->getIndices()->clone();
    geometry->getIndices()->setValues(indices);
    osg::notifyChanged(geometry->getIndices(), geometry, osg::Geometry::IndicesFieldMask);
    *out.nextIndices = geometry->getIndices()->clone();
}

void shiftLifted(const osg::GeometryPtr& mesh, const std::vector<bool>& isLifted, float shift)
{
    const Ids indices = indicesOf(mesh);
    std::vector<bool> isMoved(mesh->getPositions()->getSize(), false);
    for (std::size_t corner = 0; corner < indices.size(); ++corner) {
        const unsigned int vertex = indices[corner];
        if (!isLifted[corner / 3] || isMoved[vertex])
            continue;
        isMoved[vertex] = true;
        const osg::Vec2f uv = mesh->getTexCoords()->getValue(vertex);
        mesh->getTexCoords()->setValue(uv + osg::Vec2f(shift, 0), vertex);
    }
}

/// Another shell of the same surfaces, with a mesh that is built from scratch.
osg::RefPtr<osg::Node> secondShellOf(const osg::NodePtr& shell)
{
    osg::RefPtr<osg::Node> second(shellOf({}));
    for (unsigned int i = 0; i < shell->getNChildren(); ++i)
        second->addChild(osg::dcast<osg::Node>(shell->getChild(i)->shallowCopy()));
    return second;
}

void record(State& state, const osg::GeometryPtr& geometry)
{
    if (!geometry || !geometry->getPositions() || !geometry->getIndices())
        return;
    state.positions.push_back(geometry->getPositions()->getValues());
    state.uvs.push_back(kyUVUtils::getUVValuesLocal(geometry, kyUVTypes::UVSet0));
    state.secondUVs.push_back(kyUVUtils::getUVValuesLocal(geometry, kyUVTypes::UVSet1));
    state.indices.push_back(indicesOf(geometry));
    state.normals.emplace_back();
    if (geometry->getNormals())
        state.normals.back() = geometry->getNormals()->getValues();
}

/// The triangles of a mesh with other vertex numbers, in a canonical order.
std::vector<Corners> renumberedTriangles(const Ids& indices, const Ids& numbers)
{
    std::vector<Corners> triangles;
    for (std::size_t i = 0; i < indices.size(); i += 3)
        triangles.push_back(
            {numbers[indices[i]], numbers[indices[i + 1]], numbers[indices[i + 2]]});
    std::sort(triangles.begin(), triangles.end());
    return triangles;
}

void expectTranslationGoesThereAndBack(const CompactShellMesh& mesh, const State& state)
{
    const Ids& meshIds = state.indices.back();
    Ids triangles;
    mesh.mapSMeshCToF(meshIds.data(), sizeOf(meshIds), triangles);
    Ids compact;
    mesh.mapVertsFToC(triangles.data(), sizeOf(triangles), compact);
    RC_ASSERT(compact == meshIds);
    for (std::size_t i = 0; i < meshIds.size(); i += 3)
        for (const auto& [a, b] : {std::pair(0U, 1U), std::pair(1U, 2U), std::pair(2U, 0U)}) {
            const Ids edge{meshIds[i + a], meshIds[i + b]};
            FlatEdgeList fIds;
            mesh.mapEdgesCToF(edge.data(), 2, fIds);
            RC_ASSERT(fIds.size() == 2U);
            RC_ASSERT(Edge(mesh.mapVertFToC(fIds[0]), mesh.mapVertFToC(fIds[1])) ==
                      Edge(edge[0], edge[1]));
            RC_ASSERT(mesh.mapVertFToC(fIds[0]) <= mesh.mapVertFToC(fIds[1]));
        }
}

} // namespace

bool areTrianglesDistinct(const osg::NodePtr& shell)
{
    const CompactMeshScope scope(coreOf(shell), shell, kyUVTypes::UVSet0);
    const Ids triangles = meshTriangles(*scope.getMesh(), shell);
    return std::set<unsigned int>(triangles.begin(), triangles.end()).size() == triangles.size();
}

void lift(const osg::NodePtr& shell, const std::vector<bool>& isLifted, float shift,
          kyTopologyBridge& bridge)
{
    const CompactMeshScope scope(coreOf(shell), shell, kyUVTypes::UVSet0);
    const Ids meshTriangle = meshTriangles(*scope.getMesh(), shell);
    std::vector<bool> isLiftedInMesh(isLifted.size());
    for (std::size_t t = 0; t < isLifted.size(); ++t)
        isLiftedInMesh[meshTriangle[t]] = isLifted[t];
    const Ids label = fanOfCorner(indicesOf(scope.getGeometry()), isLiftedInMesh);

    bridge.getImpl()->patchResize(shell->getNChildren());
    std::size_t triangle = 0;
    for (const ActiveSurface& surface : activeSurfaces(shell)) {
        Ids surfaceLabel;
        for (unsigned int t = 0; t < surface.geometry->getIndices()->getSize() / 3; ++t, ++triangle)
            for (unsigned int k = 0; k < 3; ++k)
                surfaceLabel.push_back(label[3 * meshTriangle[triangle] + k]);
        TopologyOpOutData out(bridge.getImpl(), surface.childIndex);
        splitByLabels(surface.geometry, surfaceLabel, out);
    }
    TopologyOpOutData out(bridge.getImpl());
    splitByLabels(scope.getGeometry(), label, out);
    shiftLifted(scope.getGeometry(), isLiftedInMesh, shift);
    scope.getMesh()->mapChanged(coreOf(shell), shell, &out);
    scope.commit();
}

void reverseVertices(const osg::NodePtr& shell, const ActiveSurface& active,
                     kyTopologyBridge& bridge)
{
    const CompactMeshScope scope(coreOf(shell), shell, kyUVTypes::UVSet0);
    bridge.getImpl()->patchResize(shell->getNChildren());
    TopologyOpOutData top(bridge.getImpl());
    const unsigned int meshCount = scope.getGeometry()->getPositions()->getSize();
    top.storeShuffle({}, {}, meshCount, meshCount);
    *top.prevIndices = scope.getGeometry()->getIndices()->clone();

    const osg::GeometryPtr surface = active.geometry;
    const unsigned int count = surface->getPositions()->getSize();
    Ids reversed(count);
    std::iota(reversed.rbegin(), reversed.rend(), 0U);
    TopologyOpOutData out(bridge.getImpl(), active.childIndex);
    *out.nextShuffle = *out.prevShuffle = reversed;
    *out.prevIndices = surface->getIndices()->clone();
    kyGeoShuffle::shuffleProperties(surface, reversed.data(), count, nullptr, 0, true);
    Ids indices = indicesOf(surface);
    for (unsigned int& index : indices)
        index = count - 1 - index;
    surface->getIndices()->setValues(indices);
    osg::notifyChanged(surface->getIndices(), surface, osg::Geometry::IndicesFieldMask);
    *out.nextIndices = surface->getIndices()->clone();
    scope.getMesh()->mapChanged(coreOf(shell), shell, &top);
}

State stateOf(const osg::NodePtr& shell)
{
    State state;
    for (unsigned int i = 0; i < shell->getNChildren(); ++i)
        record(state, surfaceOf(shell, i));
    const CompactShellMesh* mesh =
        CompactShellMesh::getCMesh(coreOf(shell), shell, kyUVTypes::UVSet0);
    record(state, mesh->getGeomPtr());
    state.compactIdOfVertex = mesh->getVertFToC();
    for (unsigned int c = 0; c < state.positions.back().size(); ++c) {
        state.verticesOfCompactId.emplace_back();
        mesh->mapVertsCToF(&c, 1, state.verticesOfCompactId.back(), true);
        std::sort(state.verticesOfCompactId.back().begin(), state.verticesOfCompactId.back().end());
    }
    return state;
}

void expectSameAsFreshBuild(const osg::NodePtr& shell)
{
    const State kept = stateOf(shell);
    const State fresh = stateOf(secondShellOf(shell));
    RC_ASSERT(kept.positions == fresh.positions);

    Ids freshNumber(kept.positions.back().size(), 0xFFFFFFFF);
    for (std::size_t f = 0; f < kept.compactIdOfVertex.size(); ++f)
        freshNumber.at(kept.compactIdOfVertex[f]) = fresh.compactIdOfVertex.at(f);
    for (std::size_t c = 0; c < freshNumber.size(); ++c) {
        const unsigned int number = freshNumber[c];
        RC_ASSERT(kept.positions.back()[c] == kept.positions.back().at(number));
        for (unsigned int i = 0; i < 2; ++i) // a build takes those of any vertex that is near
            RC_ASSERT(isNear(kept.uvs.back()[c][i], fresh.uvs.back()[number][i]));
        RC_ASSERT(kept.verticesOfCompactId[c] == fresh.verticesOfCompactId[number]);
    }
    Ids identity(freshNumber.size());
    std::iota(identity.begin(), identity.end(), 0U);
    RC_ASSERT(renumberedTriangles(kept.indices.back(), freshNumber) ==
              renumberedTriangles(fresh.indices.back(), identity));
    expectTranslationGoesThereAndBack(
        *CompactShellMesh::getCMesh(coreOf(shell), shell, kyUVTypes::UVSet0), kept);
}

} // namespace steps

#include "scene/RepairOperation.h"

#include "mesh/CornerVertices.h"
#include "mesh/EqualValues.h"
#include "mesh/SolverFrame.h"
#include "solver/SolverGeometry.h"

#include "OpenSGUtils/RemoveDegPolysGraphOp.h"
#include "UVUtils/repair/kyTopologyRepair.h"

#include <algorithm>
#include <array>
#include <span>

namespace uvtool
{
namespace
{

CornerVertices wholeVertices(const DocumentGeometry& geometry)
{
    CornerVertices vertices = distinctCorners(geometry);
    using Key = std::array<std::uint32_t, 3>;
    FirstUseNumbers<Key, ValueHash> numbers(vertices.vertexCount);
    for (std::size_t i = 0; i < vertices.vertexOfCorner.size(); ++i) {
        const std::uint32_t polygon = geometry.polygonOfTriangle[i / 3];
        const std::int32_t material =
            geometry.materialOfPolygon.empty() ? -1 : geometry.materialOfPolygon[polygon];
        vertices.vertexOfCorner[i] = numbers.of({vertices.vertexOfCorner[i],
                                                 geometry.positions.ofCorner[geometry.triangles[i]],
                                                 static_cast<std::uint32_t>(material)});
    }
    vertices.vertexCount = numbers.size();
    return vertices;
}

/// Each fix makes a vertex at least, and none that no corner names, so this ends.
void fixUntilNothingIsFound(const osg::GeometryPtr& geometry, RepairCounts& counts)
{
    kyTopologyRepair repair(geometry, kyUVTypes::UVSet0);
    for (;;) {
        const unsigned int vertices = repair.fixSingularVertices();
        const unsigned int edges = repair.fixSingularEdges();
        if (vertices + edges == 0)
            return;
        counts.singularVertices += vertices;
        counts.singularEdges += edges;
        ++counts.rounds;
    }
}

/// New vertices become new values of the attribute, the others are those that they were.
template <class T>
std::vector<std::uint32_t>
numbersOf(const CornerAttribute<T>& attribute, const std::vector<std::uint32_t>& triangles,
          std::vector<std::uint32_t> vertexOfCorner, std::size_t oldCount)
{
    const std::size_t valueCount = attribute.values.size();
    for (std::size_t i = 0; i < vertexOfCorner.size(); ++i)
        vertexOfCorner[i] =
            vertexOfCorner[i] < oldCount
                ? attribute.ofCorner[triangles[i]]
                : static_cast<std::uint32_t>(vertexOfCorner[i] - oldCount + valueCount);
    return vertexOfCorner;
}

/// Where the vertices lie is no matter here, and neither are their UVs.
osg::RefPtr<osg::Geometry> topologyOf(std::size_t vertexCount,
                                      std::span<const std::uint32_t> triangles)
{
    const std::vector<Vec3f> origins(vertexCount);
    return makeGeometry({origins, triangles, {}}, 0);
}

/// [triangle] 1 for those of `all` that are not in `left`, which has the others in their order. Of
/// equal triangles all are left or none.
std::vector<char> missingTriangles(std::span<const std::uint32_t> all,
                                   std::span<const unsigned int> left)
{
    std::vector<char> isMissing(all.size() / 3, 0);
    for (std::size_t t = 0; t < isMissing.size(); ++t) {
        const auto triangle = all.subspan(3 * t, 3);
        if (left.size() >= 3 && std::equal(triangle.begin(), triangle.end(), left.begin()))
            left = left.subspan(3);
        else
            isMissing[t] = 1;
    }
    return isMissing;
}

/// Drops the vertices whose corners have no UV.
void keepMapped(const CornerVertices& vertices, const std::vector<std::uint32_t>& triangles,
                const CornerAttribute<Vec2f>& uvs, std::vector<unsigned int>& kept)
{
    std::vector<char> isMapped(vertices.vertexCount, 0);
    for (std::size_t i = 0; i < triangles.size(); ++i)
        isMapped[vertices.vertexOfCorner[i]] = uvs.has(triangles[i]) ? 1 : 0;
    std::erase_if(kept, [&isMapped](unsigned int vertex) { return isMapped[vertex] == 0; });
}

} // namespace

RepairCounts& RepairCounts::operator+=(const RepairCounts& other)
{
    degenerateTriangles += other.degenerateTriangles;
    droppedPolygons += other.droppedPolygons;
    singularVertices += other.singularVertices;
    singularEdges += other.singularEdges;
    newVertices += other.newVertices;
    singularUVs += other.singularUVs;
    newUVs += other.newUVs;
    rounds = std::max(rounds, other.rounds);
    return *this;
}

std::vector<char> findDegenerateTriangles(const DocumentGeometry& geometry)
{
    const CornerVertices vertices = cornersByPositionNumber(geometry);
    const osg::RefPtr<osg::Geometry> core =
        makeGeometry({intoFrame(geometry.positions.values).points, vertices.vertexOfCorner, {}}, 0);
    const osg::RefPtr<osg::Node> node(osg::Node::create());
    node->setCore(core);
    osg::RemoveDegPolysGraphOp("RemoveDegPolys").traverse(node);
    return missingTriangles(vertices.vertexOfCorner, core->getIndices()->getValues());
}

Repair repairTriangles(const DocumentGeometry& geometry, RepairedVertices kind)
{
    Repair repair;
    const CornerVertices vertices =
        kind == WholeVertices ? wholeVertices(geometry) : cornersByPositionNumber(geometry);
    const osg::RefPtr<osg::Geometry> core =
        topologyOf(vertices.vertexCount, vertices.vertexOfCorner);
    fixUntilNothingIsFound(core, repair.counts);
    repair.counts.newVertices = core->getPositions()->getSize() - vertices.vertexCount;
    repair.numberOfTriangleCorner =
        numbersOf(geometry.positions, geometry.triangles, core->getIndices()->getValues(),
                  vertices.vertexCount);
    return repair;
}

Repair repairUVs(const DocumentGeometry& geometry, std::size_t slot)
{
    const CornerAttribute<Vec2f>& uvs = geometry.uvs[slot];
    Repair repair;
    if (!uvs.exists())
        return repair;
    const CornerVertices vertices = cornersByUVNumber(geometry, slot);
    const osg::RefPtr<osg::Geometry> core =
        topologyOf(vertices.vertexCount, vertices.vertexOfCorner);
    kyTopologyRepair topology(core, kyUVTypes::UVSet0);
    std::vector<unsigned int> singular = topology.findSingularVertices();
    keepMapped(vertices, geometry.triangles, uvs, singular);
    topology.fixSingularVertices(singular, nullptr);
    repair.counts.singularUVs = singular.size();
    repair.counts.newUVs = core->getPositions()->getSize() - vertices.vertexCount;
    repair.counts.rounds = singular.empty() ? 0 : 1;
    repair.numberOfTriangleCorner =
        numbersOf(uvs, geometry.triangles, core->getIndices()->getValues(), vertices.vertexCount);
    return repair;
}

} // namespace uvtool

#include "scene/RepairOperation.h"

#include "mesh/CornerVertices.h"
#include "mesh/EqualValues.h"
#include "solver/SolverGeometry.h"

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

/// Gives triangles that name a vertex twice vertices of their own.
class FoldedTriangles
{
public:
    FoldedTriangles(std::vector<std::uint32_t>& corners, std::size_t vertexCount)
        : corners_(corners), uses_(vertexCount, 0)
    {
        for (const std::uint32_t vertex : corners)
            ++uses_[vertex];
    }

    /// Returns how many shared a vertex with another triangle.
    std::size_t detach()
    {
        std::size_t count = 0;
        for (std::size_t i = 0; i + 3 <= corners_.size(); i += 3) {
            const std::span<std::uint32_t> triangle = std::span(corners_).subspan(i, 3);
            if (isFolded(triangle) && detach(triangle))
                ++count;
        }
        return count;
    }

    std::size_t vertexCount() const { return uses_.size(); }

private:
    static bool isFolded(std::span<const std::uint32_t> triangle)
    {
        return triangle[0] == triangle[1] || triangle[1] == triangle[2] ||
               triangle[2] == triangle[0];
    }

    bool detach(std::span<std::uint32_t> triangle)
    {
        bool isDetached = false;
        for (std::size_t k = 0; k < 3; ++k) {
            const std::uint32_t vertex = triangle[k];
            const auto own = std::count(triangle.begin(), triangle.end(), vertex);
            if (uses_[vertex] == own)
                continue;
            uses_[vertex] -= own;
            std::replace(triangle.begin(), triangle.end(), vertex,
                         static_cast<std::uint32_t>(uses_.size()));
            uses_.push_back(own);
            isDetached = true;
        }
        return isDetached;
    }

    std::vector<std::uint32_t>& corners_;
    std::vector<std::ptrdiff_t> uses_; ///< [vertex] by corners
};

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
    foldedTriangles += other.foldedTriangles;
    singularVertices += other.singularVertices;
    singularEdges += other.singularEdges;
    newVertices += other.newVertices;
    singularUVs += other.singularUVs;
    newUVs += other.newUVs;
    rounds = std::max(rounds, other.rounds);
    return *this;
}

Repair repairTriangles(const DocumentGeometry& geometry, RepairedVertices kind)
{
    Repair repair;
    CornerVertices vertices =
        kind == WholeVertices ? wholeVertices(geometry) : cornersByPositionNumber(geometry);
    FoldedTriangles folded(vertices.vertexOfCorner, vertices.vertexCount);
    repair.counts.foldedTriangles = folded.detach();
    const osg::RefPtr<osg::Geometry> core =
        topologyOf(folded.vertexCount(), vertices.vertexOfCorner);
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

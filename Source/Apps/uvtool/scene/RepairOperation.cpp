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

/// New vertices become new positions, the others are those that they were.
std::vector<std::uint32_t> positionsOf(const DocumentGeometry& geometry,
                                       std::vector<std::uint32_t> vertexOfCorner,
                                       std::size_t oldCount)
{
    const std::size_t positionCount = geometry.positions.values.size();
    for (std::size_t i = 0; i < vertexOfCorner.size(); ++i)
        vertexOfCorner[i] =
            vertexOfCorner[i] < oldCount
                ? geometry.positions.ofCorner[geometry.triangles[i]]
                : static_cast<std::uint32_t>(vertexOfCorner[i] - oldCount + positionCount);
    return vertexOfCorner;
}

} // namespace

RepairCounts& RepairCounts::operator+=(const RepairCounts& other)
{
    foldedTriangles += other.foldedTriangles;
    singularVertices += other.singularVertices;
    singularEdges += other.singularEdges;
    newVertices += other.newVertices;
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
    // Where the vertices lie is no matter here, and neither are their UVs.
    const std::vector<Vec3f> nowhere(folded.vertexCount());
    const osg::RefPtr<osg::Geometry> core = makeGeometry({nowhere, vertices.vertexOfCorner, {}}, 0);
    fixUntilNothingIsFound(core, repair.counts);
    repair.counts.newVertices = core->getPositions()->getSize() - vertices.vertexCount;
    repair.positionOfTriangleCorner =
        positionsOf(geometry, core->getIndices()->getValues(), vertices.vertexCount);
    return repair;
}

} // namespace uvtool

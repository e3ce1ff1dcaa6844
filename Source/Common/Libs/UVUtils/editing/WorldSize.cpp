// Islands scaled to their size in the world.

#include "OpenSG/Matrix.h"
#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"

#include <cmath>
#include <span>
#include <vector>

namespace
{

using osg::Vec2f;
using DoubleUV = osg::Vector<double, 2>;
using DoublePoint = osg::Point<double, 3>;
using Ids = std::vector<unsigned int>;

/// Islands with their triangles and vertices, as doFindUVIslands gives them.
struct Islands
{
    Ids triangles;
    Ids triangleCounts;
    Ids vertices;
    Ids vertexCounts;
};

/// What the islands are measured on.
struct Measured
{
    std::vector<DoublePoint> positions; ///< [vertexCount] in the world
    std::span<const Vec2f> uvs;         ///< [vertexCount] or more
};

/// In double, since far away from the origin a float is coarse.
std::vector<DoublePoint> inWorld(std::span<const osg::Pnt3f> positions, const osg::Matrix& toWorld)
{
    const osg::TransformationMatrix<double> matrix(toWorld);
    std::vector<DoublePoint> points;
    points.reserve(positions.size());
    for (const osg::Pnt3f& position : positions)
        points.push_back(matrix.transformPoint(DoublePoint(position)));
    return points;
}

bool isFinite(const Vec2f& uv)
{
    return std::isfinite(uv.x()) && std::isfinite(uv.y());
}

struct Areas
{
    double inWorld = 0;
    double ofUVs = 0;
};

Areas areasOfTriangle(const Measured& measured, std::span<const unsigned int, 3> corners)
{
    const auto& p = measured.positions;
    const DoubleUV a(measured.uvs[corners[0]]);
    const DoubleUV b(measured.uvs[corners[1]]);
    const DoubleUV c(measured.uvs[corners[2]]);
    const auto normal = (p[corners[1]] - p[corners[0]]).cross(p[corners[2]] - p[corners[0]]);
    return {0.5 * normal.length(),
            std::abs(0.5 * (a.x() * (b.y() - c.y()) + b.x() * (c.y() - a.y()) +
                            c.x() * (a.y() - b.y())))};
}

/// A triangle with a corner that is nowhere says nothing about the size of its island.
Areas areasOf(const Measured& measured, std::span<const unsigned int> triangles)
{
    Areas sum;
    for (; !triangles.empty(); triangles = triangles.subspan(3)) {
        const Areas areas = areasOfTriangle(measured, triangles.first<3>());
        if (!std::isfinite(areas.inWorld + areas.ofUVs))
            continue;
        sum.inWorld += areas.inWorld;
        sum.ofUVs += areas.ofUVs;
    }
    return sum;
}

double factorFor(const Areas& areas, double patchArea)
{
    constexpr double smallestUVArea = 2.220446049250313e-16;
    return areas.ofUVs < smallestUVArea ? 1 : std::sqrt(areas.inWorld / patchArea / areas.ofUVs);
}

/// vertexAt  gives each of the `count` vertices. Those that are nowhere count in the divisor only.
template <class VertexAt>
DoubleUV meanOf(std::span<const Vec2f> uvs, std::size_t count, const VertexAt& vertexAt)
{
    DoubleUV sum;
    for (std::size_t i = 0; i < count; ++i)
        if (const Vec2f& uv = uvs[vertexAt(i)]; isFinite(uv))
            sum += DoubleUV(uv);
    const auto divisor = static_cast<double>(count);
    return DoubleUV(sum.x() / divisor, sum.y() / divisor);
}

void scale(std::span<Vec2f> uvs, std::span<const unsigned int> vertices, double factor,
           const DoubleUV& center, const DoubleUV& newCenter)
{
    for (const unsigned int vertex : vertices)
        uvs[vertex] = Vec2f((DoubleUV(uvs[vertex]) - center) * factor + newCenter);
}

/// overallCenter  from where the islands move away as they grow; null lets them grow in place
void scaleIslands(const Islands& islands, const Measured& measured, double patchArea,
                  const DoubleUV* overallCenter, std::span<Vec2f> uvs)
{
    std::span<const unsigned int> triangles(islands.triangles);
    std::span<const unsigned int> vertices(islands.vertices);
    for (std::size_t i = 0; i < islands.vertexCounts.size(); ++i) {
        const auto ofIsland = vertices.first(islands.vertexCounts[i]);
        const Areas areas = areasOf(measured, triangles.first(islands.triangleCounts[i]));
        const double factor = factorFor(areas, patchArea);
        const DoubleUV center =
            meanOf(uvs, ofIsland.size(), [&](std::size_t k) { return ofIsland[k]; });
        scale(uvs, ofIsland, factor, center,
              overallCenter ? (center - *overallCenter) * factor + *overallCenter : center);
        triangles = triangles.subspan(islands.triangleCounts[i]);
        vertices = vertices.subspan(islands.vertexCounts[i]);
    }
}

/// Anything but a number that islands can be measured by is 0.
double areaOfPatch(float width, float height)
{
    const double area = double{width} * double{height};
    return area > 0 && std::isfinite(area) ? area : 0;
}

} // namespace

kyUVTypes::ReturnCode kyUVUtils::scaleToMatchWorldSize(const osg::GeometryPtr& geometry,
                                                       const osg::NodePtr& node,
                                                       kyUVTypes::UVSet uvSet, float worldWidth,
                                                       float worldHeight, bool selectedOnly)
{
    if (!isValidGeometry(geometry, node, false) || !node)
        return kyUVTypes::Failure;
    const CompactMeshScope scope(geometry, node, uvSet);
    const Ids seeds = selectedOnly ? scope.readTempIndices(kyUVTypes::IslandSeeds) : Ids();
    if (selectedOnly && seeds.empty())
        return kyUVTypes::Failure;
    const kyUVTypes::ReturnCode result =
        doScaleToMatchWorldSize(scope.getGeometry(), uvSet, node->getToWorld(), worldWidth,
                                worldHeight, seeds.data(), sizeOf(seeds));
    if (result == kyUVTypes::Success)
        scope.commit();
    return result;
}

kyUVTypes::ReturnCode
kyUVUtils::doScaleToMatchWorldSize(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                                   const osg::TransformationMatrix<float>& toWorld,
                                   float worldWidth, float worldHeight, const unsigned int* ids,
                                   unsigned int count)
{
    const osg::GeoTexCoords2fPtr slot = uvSlot(geometry, uvSet);
    const auto positions = osg::dcast<osg::GeoPositions3f>(geometry->getPositions());
    const double patchArea = areaOfPatch(worldWidth, worldHeight);
    if (!slot || !positions || positions->getSize() == 0 ||
        slot->getSize() < positions->getSize() || patchArea == 0)
        return kyUVTypes::Failure;

    Islands islands;
    doFindUVIslands(geometry, ids, count, false, islands.triangles, islands.triangleCounts,
                    islands.vertices, islands.vertexCounts);
    const std::span<Vec2f> uvs = slot->values();
    const DoubleUV overallCenter = meanOf(uvs, uvs.size(), [](std::size_t i) { return i; });
    const bool growInPlace = ids && count != 0;
    scaleIslands(islands, {inWorld(positions->values(), toWorld), uvs}, patchArea,
                 growInPlace ? nullptr : &overallCenter, uvs);
    notifySlotChanged(geometry, uvSet);
    return kyUVTypes::Success;
}

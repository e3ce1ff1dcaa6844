// First UVs of kyUVUtils, made without the solver.

#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/model/NodeName.h"
#include "UVUtils/model/kyUVUtils.h"
#include "Utils/kyLog.h"

#include <algorithm>
#include <array>
#include <limits>

namespace
{

/// An axis-parallel box; upside down while nothing is in it.
struct Box
{
    static constexpr double Highest = std::numeric_limits<double>::max();
    std::array<double, 3> low{Highest, Highest, Highest};
    std::array<double, 3> high{-Highest, -Highest, -Highest};

    void extend(const osg::Pnt3f& point)
    {
        for (unsigned int axis = 0; axis < 3; ++axis) {
            low[axis] = std::min(low[axis], double{point[axis]});
            high[axis] = std::max(high[axis], double{point[axis]});
        }
    }
    /// Never NaN: low is at most Highest and high at least -Highest, whatever came in. Below 0
    /// where all of it is no number.
    double extent(unsigned int axis) const { return high[axis] - low[axis]; }
};

/// [island] The box of its vertices.
std::vector<Box> boxesOf(unsigned int islandCount, const std::vector<unsigned int>& vertexIslands,
                         const osg::Pnt3f* positions)
{
    std::vector<Box> boxes(islandCount);
    for (std::size_t vertex = 0; vertex < vertexIslands.size(); ++vertex)
        if (vertexIslands[vertex] < islandCount)
            boxes[vertexIslands[vertex]].extend(positions[vertex]);
    return boxes;
}

/// The axes of a box, the longest first; of equal ones the lower first.
std::array<unsigned int, 3> axesByExtent(const Box& box)
{
    std::array<unsigned int, 3> axes{0, 1, 2};
    std::stable_sort(axes.begin(), axes.end(),
                     [&](unsigned int a, unsigned int b) { return box.extent(a) > box.extent(b); });
    return axes;
}

} // namespace

void kyUVUtils::createUVs(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                          const osg::NodePtr& node, ECreateUVMethod method)
{
    if (!isValidGeometry(geometry, node, false))
        return;
    const CompactMeshScope scope(geometry, node, uvSet);
    if (!scope.getGeometry())
        return;
    if (scope.hasSlot() && doCreateUVs(scope.getGeometry(), uvSet, method))
        scope.commit();
    else
        kyLog::error("Creating UVs failed for node %s.", nameForMessages(node));
}

bool kyUVUtils::doCreateUVs(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                            ECreateUVMethod method)
{
    if (!geometry || method != IslandsAABBProjection)
        return false;
    const auto positions = osg::dcast<osg::GeoPositions3f>(geometry->getPositions());
    if (!geometry->getIndices() || !positions)
        return false;
    std::vector<unsigned int> vertexIslands;
    std::vector<std::vector<unsigned int>> islandVertices;
    doFindUVIslands(geometry->getIndices(), positions->getSize(), vertexIslands, islandVertices);
    const UVArray uvs = doCreateUVsFromIslandsAABBProjection(
        positions->getSize(), positions->values().data(),
        static_cast<unsigned int>(islandVertices.size()), vertexIslands);
    return !uvs.empty() && assignTexCoords(geometry, uvSet, uvs);
}

kyUVUtils::UVArray kyUVUtils::doCreateUVsFromIslandsAABBProjection(
    unsigned int vertexCount, const osg::Point<float, 3>* positions, unsigned int islandCount,
    const std::vector<unsigned int>& vertexIslands)
{
    std::vector<std::array<unsigned int, 3>> axesOfIsland;
    axesOfIsland.reserve(islandCount);
    for (const Box& box : boxesOf(islandCount, vertexIslands, positions))
        axesOfIsland.push_back(axesByExtent(box));

    UVArray uvs(vertexCount);
    for (std::size_t vertex = 0; vertex < vertexIslands.size(); ++vertex) {
        if (vertexIslands[vertex] >= islandCount)
            continue;
        const auto& axes = axesOfIsland[vertexIslands[vertex]];
        uvs[vertex] = osg::Vec2f(positions[vertex][axes[0]], positions[vertex][axes[1]]);
    }
    return uvs;
}

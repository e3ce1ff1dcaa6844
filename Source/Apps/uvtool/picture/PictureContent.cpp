#include "picture/PictureContent.h"

#include "check/Orientation.h"
#include "layout/TriangleMeasures.h"

#include <algorithm>
#include <cmath>

namespace uvtool
{
namespace
{

/// Numbers the islands that are drawn, in order of their own numbers.
void numberIslands(const UVLayout& layout, PictureContent& content)
{
    std::vector<std::int32_t> used;
    content.islandOfTriangle.assign(layout.triangleCount(), -1);
    for (std::size_t t = 0; t < layout.triangleCount(); ++t) {
        if (layout.islandOfTriangle[t] < 0)
            continue;
        if (!isFinite(layout, t)) {
            ++content.nonFinite;
            continue;
        }
        content.islandOfTriangle[t] = layout.islandOfTriangle[t];
        ++content.triangleCount;
        if (used.empty() || used.back() != layout.islandOfTriangle[t])
            used.push_back(layout.islandOfTriangle[t]);
    }
    std::sort(used.begin(), used.end());
    used.erase(std::unique(used.begin(), used.end()), used.end());
    for (std::int32_t& island : content.islandOfTriangle) {
        if (island >= 0)
            island = static_cast<std::int32_t>(std::lower_bound(used.begin(), used.end(), island) -
                                               used.begin());
    }
    content.boundsOfIsland.resize(used.size());
    content.areaOfIsland.assign(used.size(), 0);
    content.trianglesOfIsland.assign(used.size(), 0);
}

/// Sums up areas and boxes; the signed area of each island, whose sign says which way it turns.
std::vector<double> measureIslands(const UVLayout& layout, PictureContent& content)
{
    std::vector<double> signedAreas(content.islandCount(), 0);
    for (std::size_t t = 0; t < layout.triangleCount(); ++t) {
        if (content.islandOfTriangle[t] < 0)
            continue;
        const auto island = static_cast<std::size_t>(content.islandOfTriangle[t]);
        const double area = signedArea(layout, t);
        signedAreas[island] += area;
        content.areaOfIsland[island] += std::abs(area);
        ++content.trianglesOfIsland[island];
        for (std::size_t k = 0; k < 3; ++k)
            content.boundsOfIsland[island].add(layout.point(t, k));
    }
    for (std::size_t i = 0; i < content.islandCount(); ++i) {
        content.area += content.areaOfIsland[i];
        content.bounds.add(content.boundsOfIsland[i]);
    }
    return signedAreas;
}

} // namespace

PictureContent collectContent(const UVLayout& layout)
{
    PictureContent content;
    numberIslands(layout, content);
    const std::vector<double> signedAreas = measureIslands(layout, content);
    for (std::uint32_t t = 0; t < layout.triangleCount(); ++t) {
        if (content.islandOfTriangle[t] < 0)
            continue;
        const int turn = orientation(layout.point(t, 0), layout.point(t, 1), layout.point(t, 2));
        const bool isMirrored =
            signedAreas[static_cast<std::size_t>(content.islandOfTriangle[t])] < 0;
        if (turn != 0 && (turn < 0) != isMirrored)
            content.flipped.push_back(t);
    }
    return content;
}

} // namespace uvtool

#include "check/LayoutCheck.h"

#include "check/Borders.h"
#include "check/Orientation.h"
#include "layout/TriangleMeasures.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <vector>

namespace uvtool
{
namespace
{

std::size_t islandCount(const UVLayout& layout)
{
    std::int32_t last = -1;
    for (const std::int32_t island : layout.islandOfTriangle)
        last = std::max(last, island);
    return last < 0 ? 0 : static_cast<std::size_t>(last) + 1;
}

/// What is known of an island after one pass over the triangles.
struct IslandSums
{
    std::size_t triangles = 0;
    double area = 0.0; ///< signed
    UVBox box;
};

/// Which way each triangle turns; 0 for those that take part in nothing that follows.
std::vector<std::int8_t> turnsOfTriangles(const UVLayout& layout, LayoutCheck& check)
{
    std::vector<std::int8_t> signs(layout.triangleCount(), 0);
    for (std::size_t t = 0; t < signs.size(); ++t) {
        if (layout.islandOfTriangle[t] < 0)
            continue;
        ++check.triangles;
        if (!isFinite(layout, t)) {
            check.nonFinite.add(t);
            continue;
        }
        signs[t] = static_cast<std::int8_t>(
            orientation(layout.point(t, 0), layout.point(t, 1), layout.point(t, 2)));
        if (signs[t] == 0)
            check.degenerate.add(t);
    }
    return signs;
}

std::vector<IslandSums> sumIslands(const UVLayout& layout, LayoutCheck& check)
{
    std::vector<IslandSums> islands(islandCount(layout));
    for (std::size_t t = 0; t < layout.triangleCount(); ++t) {
        if (layout.islandOfTriangle[t] < 0)
            continue;
        IslandSums& island = islands[static_cast<std::size_t>(layout.islandOfTriangle[t])];
        ++island.triangles;
        if (!isFinite(layout, t))
            continue;
        const double area = signedArea(layout, t);
        island.area += area;
        check.area += std::abs(area);
        for (std::size_t corner = 0; corner < 3; ++corner)
            island.box.add(layout.point(t, corner));
    }
    for (const IslandSums& island : islands) {
        check.islands += island.triangles > 0 ? 1 : 0;
        check.mirroredIslands += island.area < 0.0 ? 1 : 0;
        if (!island.box.isEmpty())
            check.bounds.add(island.box);
    }
    return islands;
}

void countFlips(const UVLayout& layout, std::span<const std::int8_t> signs,
                std::span<const IslandSums> islands, LayoutCheck& check)
{
    for (std::size_t t = 0; t < signs.size(); ++t) {
        if (signs[t] == 0)
            continue;
        const bool isMirrored =
            islands[static_cast<std::size_t>(layout.islandOfTriangle[t])].area < 0.0;
        if ((signs[t] < 0) != isMirrored)
            check.flipped.add(t);
    }
}

/// Least distance from a box to the sides of the one around it; negative when it reaches over one.
double marginInside(const UVBox& inner, const UVBox& outer)
{
    double margin = double(inner.lo[0]) - outer.lo[0];
    for (std::size_t axis = 0; axis < 2; ++axis) {
        margin = std::min(margin, double(inner.lo[axis]) - outer.lo[axis]);
        margin = std::min(margin, double(outer.hi[axis]) - inner.hi[axis]);
    }
    return margin;
}

void measureMargins(std::span<const IslandSums> islands, std::span<const UVBox> boxes,
                    LayoutCheck& check)
{
    for (std::size_t i = 0; i < islands.size(); ++i) {
        if (islands[i].box.isEmpty() || boxes.empty())
            continue;
        double best = marginInside(islands[i].box, boxes[0]);
        for (const UVBox& box : boxes.subspan(1))
            best = std::max(best, marginInside(islands[i].box, box));
        check.margin = std::min(check.margin, best);
        if (best < 0.0)
            check.outside.add(i);
    }
}

} // namespace

LayoutCheck checkLayout(const UVLayout& layout, std::span<const UVBox> boxes)
{
    assert(layout.corners.size() == 3 * layout.triangleCount());
    LayoutCheck check;
    const std::vector<std::int8_t> signs = turnsOfTriangles(layout, check);
    const std::vector<IslandSums> islands = sumIslands(layout, check);
    countFlips(layout, signs, islands, check);
    measureMargins(islands, boxes, check);

    const Borders borders = findBorders(layout, signs);
    check.overlaps = findOverlaps(layout, signs, borders);
    check.gap = smallestGap(borders);
    if (check.overlaps.coveredBetween.count > 0)
        check.gap.distance = 0.0;
    return check;
}

} // namespace uvtool

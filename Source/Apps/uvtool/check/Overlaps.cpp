#include "check/Overlaps.h"

#include "check/Orientation.h"

#include <algorithm>
#include <utility>

namespace uvtool
{
namespace
{

using Point = std::array<float, 2>;

/// Counting stops here. Layouts with that many overlaps exist (thousands of islands stacked on each
/// other), and nobody wants to wait for their number.
constexpr std::size_t mostFindings = 2'000'000;

/// The corner of a box that lies farthest on the left of the way from `from` to `to`.
Point leftmostCorner(const UVBox& box, const Point& from, const Point& to)
{
    return {to[1] > from[1] ? box.lo[0] : box.hi[0], to[0] > from[0] ? box.hi[1] : box.lo[1]};
}

/// How far a box reaches to the left of a line: 1 beyond it, 0 up to it, -1 not even that.
int reachToLeft(const Point& from, const Point& to, const UVBox& box)
{
    return orientation(from, to, leftmostCorner(box, from, to));
}

/// A triangle that turns counter-clockwise.
struct Cover
{
    std::array<Point, 3> corners;
    UVBox box;

    const Point& from(std::size_t edge) const { return corners[edge]; }
    const Point& to(std::size_t edge) const { return corners[edge == 2 ? 0 : edge + 1]; }
};

Cover coverOf(const UVLayout& layout, std::size_t triangle, std::int8_t sign)
{
    Cover cover{{layout.point(triangle, 0), layout.point(triangle, 1), layout.point(triangle, 2)},
                {}};
    if (sign < 0)
        std::swap(cover.corners[1], cover.corners[2]);
    for (const Point& corner : cover.corners)
        cover.box.add(corner);
    return cover;
}

/// False when the box lies beside the triangle or behind one of its edges. A box that reaches up to
/// the line of an edge may hold a segment along that edge.
bool mayHoldCovered(const Cover& cover, const UVBox& box)
{
    if (!cover.box.meets(box))
        return false;
    for (std::size_t edge = 0; edge < 3; ++edge)
        if (reachToLeft(cover.from(edge), cover.to(edge), box) < 0)
            return false;
    return true;
}

/// True when two segments on one line go the same way and share more than a point.
bool runAlong(const Point& from, const Point& to, const Point& otherFrom, const Point& otherTo)
{
    const std::size_t axis = from[0] != to[0] ? 0 : 1;
    if ((from[axis] < to[axis]) != (otherFrom[axis] < otherTo[axis]))
        return false;
    const auto [low, high] = std::minmax(from[axis], to[axis]);
    const auto [otherLow, otherHigh] = std::minmax(otherFrom[axis], otherTo[axis]);
    return std::max(low, otherLow) < std::min(high, otherHigh);
}

/// True when the triangle covers points just left of the segment, along a piece of it.
///
/// Either the segment runs through the inside of the triangle, which is so unless a line along the
/// segment or along an edge has them on different sides (the separating axes of two convex sets in
/// the plane), or it runs along an edge with the triangle on its left.
bool coversLeftSide(const Cover& cover, const BorderSegment& segment)
{
    for (std::size_t edge = 0; edge < 3; ++edge) {
        const int fromSide = orientation(cover.from(edge), cover.to(edge), segment.from);
        const int toSide = orientation(cover.from(edge), cover.to(edge), segment.to);
        if (fromSide == 0 && toSide == 0)
            return runAlong(segment.from, segment.to, cover.from(edge), cover.to(edge));
        if (fromSide <= 0 && toSide <= 0)
            return false;
    }
    bool hasLeft = false;
    bool hasRight = false;
    for (const Point& corner : cover.corners) {
        const int side = orientation(segment.from, segment.to, corner);
        hasLeft |= side > 0;
        hasRight |= side < 0;
    }
    return hasLeft && hasRight;
}

bool crossInside(const BorderSegment& a, const BorderSegment& b)
{
    return orientation(a.from, a.to, b.from) * orientation(a.from, a.to, b.to) < 0 &&
           orientation(b.from, b.to, a.from) * orientation(b.from, b.to, a.to) < 0;
}

/// The lowest triangle of the same and of another island over each border segment; -1 for none.
struct CoverOfSegments
{
    std::vector<std::int64_t> within;
    std::vector<std::int64_t> between;
    bool complete = true;
};

CoverOfSegments coverSegments(const UVLayout& layout, std::span<const std::int8_t> signOfTriangle,
                              const Borders& borders)
{
    const std::size_t segmentCount = borders.segments.size();
    CoverOfSegments covers{std::vector<std::int64_t>(segmentCount, -1),
                           std::vector<std::int64_t>(segmentCount, -1)};
    std::size_t found = 0;
    for (std::size_t t = 0; t < layout.triangleCount() && covers.complete; ++t) {
        if (signOfTriangle[t] == 0 || layout.islandOfTriangle[t] < 0)
            continue;
        const Cover cover = coverOf(layout, t, signOfTriangle[t]);
        borders.tree.visit(
            [&](const UVBox& box, std::int32_t) { return mayHoldCovered(cover, box); },
            [&](std::uint32_t item) {
                const BorderSegment& segment = borders.segments[item];
                if (segment.triangle == t || !coversLeftSide(cover, segment))
                    return;
                ++found;
                const bool isWithin = segment.island == layout.islandOfTriangle[t];
                std::int64_t& over = (isWithin ? covers.within : covers.between)[item];
                if (over < 0)
                    over = static_cast<std::int64_t>(t);
            });
        covers.complete = found < mostFindings;
    }
    return covers;
}

void countCovered(const UVLayout& layout, std::span<const std::int8_t> signOfTriangle,
                  const Borders& borders, OverlapReport& report)
{
    const CoverOfSegments covers = coverSegments(layout, signOfTriangle, borders);
    for (std::size_t i = 0; i < borders.segments.size(); ++i) {
        if (covers.within[i] >= 0)
            report.coveredWithin.add(borders.segments[i].triangle, covers.within[i]);
        if (covers.between[i] >= 0)
            report.coveredBetween.add(borders.segments[i].triangle, covers.between[i]);
    }
    report.countedAll = report.countedAll && covers.complete;
}

void countCrossings(const Borders& borders, OverlapReport& report)
{
    for (std::uint32_t i = 0; i < borders.segments.size(); ++i) {
        const BorderSegment& segment = borders.segments[i];
        const UVBox box = segment.box();
        borders.tree.visit(
            [&](const UVBox& node, std::int32_t) {
                return box.meets(node) && reachToLeft(segment.from, segment.to, node) > 0 &&
                       reachToLeft(segment.to, segment.from, node) > 0;
            },
            [&](std::uint32_t item) {
                const BorderSegment& other = borders.segments[item];
                if (item <= i || !crossInside(segment, other))
                    return;
                Finding& finding = segment.island == other.island ? report.crossingsWithin
                                                                  : report.crossingsBetween;
                finding.add(segment.triangle, other.triangle);
            });
        if (report.crossingsWithin.count + report.crossingsBetween.count >= mostFindings) {
            report.countedAll = false;
            return;
        }
    }
}

} // namespace

OverlapReport findOverlaps(const UVLayout& layout, std::span<const std::int8_t> signOfTriangle,
                           const Borders& borders)
{
    OverlapReport report;
    countCovered(layout, signOfTriangle, borders, report);
    countCrossings(borders, report);
    return report;
}

} // namespace uvtool

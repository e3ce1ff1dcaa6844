#include "Unfold3D/parameterisation/BorderCrossings.h"

#include "Unfold3D/base/ExactPredicates.h"
#include "Unfold3D/base/Segments.h"
#include "Unfold3D/parameterisation/BorderGap.h"

#include <cmath>
#include <cstdlib>
#include <numbers>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Whether the direction to d points into the sector that opens counter-clockwise around the apex
/// from the direction to `from` to that to `to`. No two of the directions are equal.
bool isInSector(Vec2 apex, Vec2 from, Vec2 to, Vec2 d)
{
    if (orient2d(apex, from, to) > 0)
        return orient2d(apex, from, d) > 0 && orient2d(apex, d, to) > 0;
    return orient2d(apex, to, d) < 0 || orient2d(apex, d, from) < 0;
}

struct CrossingTest
{
    const Border& border;
    std::span<const Vec2> positions;

    Vec2 of(int point) const { return positions[at(point)]; }

    /// For two points of one vertex: do their fans of triangles overlap?
    bool doFansOverlap(int p, int q) const
    {
        const auto startsIn = [&](int fan, int other) {
            return isInSector(of(fan), of(border.next(fan)), of(border.previous(fan)),
                              of(border.next(other)));
        };
        return startsIn(p, q) || startsIn(q, p);
    }

    /// Pairs of fans at one vertex that overlap, up to `most`.
    int countOverlappingFans(int most) const
    {
        int count = 0;
        for (int p = 0; p < border.size() && count < most; ++p)
            for (const int q : border.pointsOfSameVertex(p))
                count += q > p && doFansOverlap(p, q);
        return count;
    }

    /// By how much the border turns to the left at a point, in (-pi, pi).
    double turnAt(int point) const
    {
        const Vec2 in = of(point) - of(border.previous(point));
        const Vec2 out = of(border.next(point)) - of(point);
        const int side = orient2d(of(border.previous(point)), of(point), of(border.next(point)));
        return side * std::abs(std::atan2(cross(in, out), dot(in, out)));
    }

    /// How many fans go once more around their vertex than the directions of their edges tell. The
    /// turns of the border, less that of the surface's own shape, add up to it (Gauss and Bonnet).
    int countWrappedFans() const
    {
        double turns = 0.0;
        for (int p = 0; p < border.size(); ++p)
            turns += turnAt(p);
        return std::abs(static_cast<int>(std::lround(0.5 * turns / std::numbers::pi)) -
                        border.eulerCharacteristic());
    }

    bool doEdgesCross(int p, int q) const
    {
        const int pNext = border.next(p);
        const int qNext = border.next(q);
        const auto isSame = [&](int i, int j) { return border.vertexOf(i) == border.vertexOf(j); };
        const auto overlap = [&](int common, int a, int b) {
            return doSpokesOverlap(positions[at(common)], positions[at(a)], positions[at(b)]);
        };
        if (isSame(p, q))
            return overlap(p, pNext, qNext);
        if (isSame(pNext, q))
            return overlap(q, p, qNext);
        if (isSame(p, qNext))
            return overlap(p, pNext, q);
        if (isSame(pNext, qNext))
            return overlap(pNext, p, q);
        return doSegmentsMeet(positions[at(p)], positions[at(pNext)], positions[at(q)],
                              positions[at(qNext)]);
    }
};

} // namespace

int countBorderCrossings(const Border& border, std::span<const Vec2> positions)
{
    const CrossingTest test{border, positions};
    int count = 0;
    edgeBoxes(border, positions).forEachNear(0.0, [&](int p, int q) {
        count += test.doEdgesCross(p, q);
        return true;
    });
    // Fans are compared by the directions of their edges, which need to differ for that.
    if (count == 0)
        count = test.countOverlappingFans(border.size()) + test.countWrappedFans();
    return count;
}

std::vector<EdgePair> crossingEdges(const Border& border, std::span<const Vec2> positions)
{
    std::vector<EdgePair> pairs;
    edgeBoxes(border, positions).forEachNear(0.0, [&](int p, int q) {
        const int pNext = border.next(p);
        const int qNext = border.next(q);
        if (!border.touches(p, q) && !border.touches(pNext, q) &&
            doSegmentsMeet(positions[at(p)], positions[at(pNext)], positions[at(q)],
                           positions[at(qNext)]))
            pairs.push_back({p, q});
        return true;
    });
    return pairs;
}

bool doesBorderCross(const Border& border, std::span<const Vec2> positions)
{
    const CrossingTest test{border, positions};
    const bool doEdgesMeet = !edgeBoxes(border, positions).forEachNear(0.0, [&](int p, int q) {
        return !test.doEdgesCross(p, q);
    });
    return doEdgesMeet || test.countOverlappingFans(1) > 0 || test.countWrappedFans() > 0;
}

} // namespace unfold3d

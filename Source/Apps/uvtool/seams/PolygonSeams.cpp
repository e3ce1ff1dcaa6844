#include "seams/PolygonSeams.h"

#include <cmath>
#include <utility>

namespace uvtool
{
namespace
{

class SeamMover
{
public:
    SeamMover(std::span<const std::uint32_t> triangles,
              std::span<const std::uint32_t> polygonOfTriangle, std::span<const Vec3f> points,
              SeamSet& seams)
        : triangles_(triangles), polygonOfTriangle_(polygonOfTriangle), points_(points),
          seams_(seams)
    {}

    void run()
    {
        for (std::size_t e = 0; e < seams_.edgeCount(); ++e) {
            if (!seams_.isSeam(e) || !isDiagonal(e))
                continue;
            std::uint32_t first = seams_.sides(e)[0];
            std::uint32_t second = seams_.sides(e)[1];
            if (wayRound(second) < wayRound(first))
                std::swap(first, second);
            if (!moveAway(first) && seams_.isSeam(e))
                moveAway(second);
        }
    }

private:
    bool isDiagonal(std::size_t edge) const
    {
        const auto sides = seams_.sides(edge);
        return sides.size() == 2 &&
               polygonOfTriangle_[sides[0] / 3] == polygonOfTriangle_[sides[1] / 3];
    }

    double length(std::uint32_t side) const
    {
        const Vec3f& a = points_[triangles_[side]];
        const Vec3f& b = points_[triangles_[endCorner(side)]];
        return std::hypot(b[0] - a[0], b[1] - a[1], b[2] - a[2]);
    }

    /// The other two sides of the side's triangle.
    double wayRound(std::uint32_t side) const
    {
        return length(endCorner(side)) + length(oppositeCorner(side));
    }

    /// Moves a seam across the triangle of one of its sides, and from a diagonal that it comes to
    /// across the next triangle, until it is on sides of the polygon only. True when it got there.
    bool moveAway(std::uint32_t side)
    {
        if (!moveAcross(side))
            return false;
        for (const std::uint32_t next : {endCorner(side), oppositeCorner(side)}) {
            const std::uint32_t edge = seams_.edgeOfSide(next);
            if (!seams_.isSeam(edge) || !isDiagonal(edge))
                continue;
            const auto sides = seams_.sides(edge);
            if (!moveAway(sides[0] == next ? sides[1] : sides[0]))
                return false;
        }
        return true;
    }

    bool moveAcross(std::uint32_t side)
    {
        const std::uint32_t after = endCorner(side);       // from the side's end to the apex
        const std::uint32_t before = oppositeCorner(side); // from the apex to the side's start
        const bool isAfterOpen = seams_.isOpen(seams_.edgeOfSide(after));
        const bool isBeforeOpen = seams_.isOpen(seams_.edgeOfSide(before));
        if (isAfterOpen && isBeforeOpen)
            return false;
        if (!isAfterOpen && !isBeforeOpen) {
            const std::uint32_t apex = triangles_[before];
            if (seams_.seamsAt(apex) > 0 || seams_.isAtBorder(apex))
                return false;
        } else {
            const std::uint32_t open = isAfterOpen ? after : before;
            const std::uint32_t shared = triangles_[isAfterOpen ? after : side];
            if (!vanishesAgainst(open, shared))
                return false;
        }
        for (const std::uint32_t s : {side, after, before}) {
            const std::uint32_t edge = seams_.edgeOfSide(s);
            if (!seams_.isBorder(edge))
                seams_.mark(edge, !seams_.isSeam(edge));
        }
        return true;
    }

    /// A border has nothing on its other side. A seam closes together with the diagonal, which is
    /// fine where these two are all that ends at the vertex they share.
    bool vanishesAgainst(std::uint32_t openSide, std::uint32_t shared) const
    {
        return seams_.isBorder(seams_.edgeOfSide(openSide)) ||
               (seams_.seamsAt(shared) == 2 && !seams_.isAtBorder(shared));
    }

    std::span<const std::uint32_t> triangles_;
    std::span<const std::uint32_t> polygonOfTriangle_;
    std::span<const Vec3f> points_;
    SeamSet& seams_;
};

} // namespace

void moveSeamsOffDiagonals(std::span<const std::uint32_t> triangles,
                           std::span<const std::uint32_t> polygonOfTriangle,
                           std::span<const Vec3f> points, SeamSet& seams)
{
    SeamMover(triangles, polygonOfTriangle, points, seams).run();
}

} // namespace uvtool

#include "Unfold3D/packing/ScaleBound.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>

namespace unfold3d
{

namespace
{

/// What some pieces cover together at scale s with a border around them: area s^2 + strip s + ends.
struct Cover
{
    double area = 0.0;
    double strip = 0.0;
    double ends = 0.0;

    void add(const Piece& piece, double border)
    {
        area += piece.area;
        strip += border * piece.hullPerimeter;
        ends += std::numbers::pi * border * border;
    }
    /// The scale at which they cover as much as there is.
    double scaleThatFills(double room) const
    {
        const double left = room - ends;
        if (left <= 0.0)
            return 0.0;
        const double root = std::sqrt(strip * strip + 4.0 * area * left);
        // The usual form of the solution is 0 / 0 where there is no area.
        return 2.0 * left / (strip + root);
    }
};

double boundBySize(const Piece& piece, const Sheet& sheet)
{
    double bound = 0.0;
    for (const Box2& box : piece.boxes)
        bound = std::max(
            bound, std::min(sheet.innerWidth() / box.width(), sheet.innerHeight() / box.height()));
    return bound;
}

} // namespace

double boundOfScale(const std::vector<Piece>& pieces, const Sheet& sheet)
{
    double bound = std::numeric_limits<double>::infinity();
    std::map<int, Cover> covers; // [tile]
    for (const Piece& piece : pieces) {
        bound = std::min(bound, boundBySize(piece, sheet));
        // What the search leaves out for the rounding is no part of the bound.
        covers[piece.tile].add(piece, 0.5 * sheet.clearance);
    }
    const double room = (sheet.innerWidth() + sheet.gap) * (sheet.innerHeight() + sheet.gap);
    for (const auto& [tile, cover] : covers)
        bound = std::min(
            bound, cover.scaleThatFills(room * (tile == Piece::anyTile ? sheet.tileCount() : 1)));
    return std::isfinite(bound) ? bound : 1.0; // points only
}

} // namespace unfold3d

#pragma once

#include "Unfold3D/packing/OutlineTree.h"
#include "Unfold3D/packing/PackOptions.h"

#include <vector>

namespace unfold3d
{

/// An island that stays where it is, as far as it touches a tile.
struct Obstacle
{
    int tile = 0;
    OutlineTree outline; ///< seen from the lower left corner of the tile
};

/// What is packed into: equal tiles side by side, tile 0 in the lower left corner, then those to
/// its right, then the next row.
///
/// The distances are a little larger than asked for, so that they hold after the layout is rounded
/// to floats. Places are looked for with `gap`, which leaves room for the rounding of the search,
/// and the result is held against `clearance`.
struct Sheet
{
    Vec2 corner; ///< lower left one of tile 0
    double width = 1.0;
    double height = 1.0;
    int tilesU = 1;
    int tilesV = 1;
    double margin = 0.0; ///< between islands and the sides of a tile
    double clearance = 0.0;
    double gap = 0.0;
    std::vector<Obstacle> obstacles;

    int tileCount() const { return tilesU * tilesV; }
    Vec2 tileCorner(int tile) const
    {
        const int column = tile % tilesU;
        const int row = tile / tilesU;
        return corner + Vec2{width * column, height * row};
    }
    double innerWidth() const { return width - 2.0 * margin; }
    double innerHeight() const { return height - 2.0 * margin; }
};

/// The sheet that the options ask for, without obstacles. Between two tiles the margin is at least
/// half the spacing on each side. Throws std::invalid_argument with a text for the user where
/// there is no such sheet, or no room left on it.
Sheet makeSheet(const PackOptions& options);

/// The tile that a point lies in; the nearest for one outside.
int tileAt(const Sheet& sheet, Vec2 point);

/// Adds the parts of the sheet that an island covers which stays where it is.
void addObstacle(Sheet& sheet, const std::vector<OutlineEdge>& outline);

} // namespace unfold3d

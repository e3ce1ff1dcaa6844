#pragma once

#include "Unfold3D/packing/OutlineTree.h"

#include <vector>

namespace unfold3d
{

/// An island ready to be laid out: turned and scaled as it has to be before the layout is made,
/// around its own origin.
///
/// A UV point p of the island has the place  preTurn * size * (p - pivot)  in the piece. Sizes of
/// all pieces have one factor in common, by which their areas add up to 1.
struct Piece
{
    int island = 0;
    Vec2 pivot; ///< middle of the box of the island
    double size = 1.0;
    Vec2 preTurn{1.0, 0.0};

    OutlineTree outline;
    double area = 0.0; ///< of its triangles, overlaps counted again
    double hullPerimeter = 0.0;
    std::vector<Vec2> turns; ///< that it may be laid in
    std::vector<Box2> boxes; ///< [turn] around the outline
    int tile = anyTile;

    static constexpr int anyTile = -1;
};

/// A piece in the layout.
struct Placement
{
    int turn = 0;
    int tile = 0;
    Vec2 at; ///< where the origin of the piece lies, seen from the lower left corner of the tile
};

struct Layout
{
    double scale = 0.0;                ///< of all pieces
    std::vector<Placement> placements; ///< [piece]
};

/// The turn and scale of a piece in a layout as one factor.
inline Vec2 turnAndScale(const Piece& piece, const Layout& layout, const Placement& placement)
{
    return layout.scale * piece.turns[static_cast<std::size_t>(placement.turn)];
}

} // namespace unfold3d

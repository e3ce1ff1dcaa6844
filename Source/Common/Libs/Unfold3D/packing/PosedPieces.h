#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/packing/OutlineDistance.h"
#include "Unfold3D/packing/Piece.h"
#include "Unfold3D/packing/Sheet.h"

#include <vector>

namespace unfold3d
{

/// The pieces and obstacles of one tile as they stand in a layout, for exact questions.
struct PosedTile
{
    struct Item
    {
        OutlineTree outline; ///< turned and scaled as in the layout
        Vec2 at;
        int piece = obstacle;

        PlacedOutline placed() const { return {&outline, at}; }
        Box2 bounds() const { return outline.bounds().movedBy(at); }
    };
    std::vector<Item> items; ///< pieces in their order, then obstacles

    static constexpr int obstacle = -1;
};

/// All tiles with at least one piece. Linear in the edges of all outlines.
std::vector<PosedTile> poseTiles(const std::vector<Piece>& pieces, const Sheet& sheet,
                                 const Layout& layout);

/// The box around the pieces, without obstacles.
Box2 boundsOfPieces(const PosedTile& tile);

/// Is everything as promised? Pieces keep the margin and the clearance, none overlaps or lies
/// within another or an obstacle, all coordinates are finite. An exact test of all outlines. Throws
/// Stopped.
bool isSound(const std::vector<Piece>& pieces, const Sheet& sheet, const Layout& layout,
             const RunControl& control);

} // namespace unfold3d

#include "Unfold3D/packing/PosedPieces.h"

#include "Unfold3D/packing/BoxGrid.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tbb/parallel_for.h>

namespace unfold3d
{

namespace
{

bool keepsMargin(const PosedTile& tile, const Sheet& sheet)
{
    const Box2 bounds = boundsOfPieces(tile);
    // The search lays pieces against the margin; sums of a few numbers round.
    const double rounding = 0.25 * (sheet.gap - sheet.clearance);
    const double least = sheet.margin - rounding;
    return bounds.low.x >= least && bounds.low.y >= least && bounds.high.x <= sheet.width - least &&
           bounds.high.y <= sheet.height - least;
}

/// Does the region of one hold the other? Their outlines don't meet, so one point tells.
bool isWithin(const PosedTile::Item& inner, const PosedTile::Item& outer)
{
    return outer.bounds().contains(inner.bounds()) &&
           covers(outer.placed(), inner.outline.edges().front().from + inner.at);
}

bool areApart(const PosedTile::Item& a, const PosedTile::Item& b, double clearance)
{
    return !isCloserThan(a.placed(), b.placed(), clearance) && !isWithin(a, b) && !isWithin(b, a);
}

bool isSound(const PosedTile& tile, const Sheet& sheet, const RunControl& control)
{
    if (!keepsMargin(tile, sheet))
        return false;
    std::vector<Box2> boxes;
    boxes.reserve(tile.items.size());
    for (const PosedTile::Item& item : tile.items)
        boxes.push_back(item.bounds().inflatedBy(0.5 * sheet.clearance));
    const BoxGrid grid(boxes);

    std::vector<char> isBad(tile.items.size(), 0);
    tbb::parallel_for(std::size_t{0}, tile.items.size(), [&](std::size_t i) {
        control.checkpoint();
        const PosedTile::Item& item = tile.items[i];
        if (item.piece == PosedTile::obstacle)
            return;
        grid.visit(boxes[i], [&](int other) {
            const auto j = static_cast<std::size_t>(other);
            // Two pieces are compared once, by the earlier.
            if (j > i && !areApart(item, tile.items[j], sheet.clearance))
                isBad[i] = 1;
        });
    });
    return std::none_of(isBad.begin(), isBad.end(), [](char bad) { return bad != 0; });
}

} // namespace

std::vector<PosedTile> poseTiles(const std::vector<Piece>& pieces, const Sheet& sheet,
                                 const Layout& layout)
{
    std::map<int, PosedTile> tiles;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Placement& placement = layout.placements[i];
        PosedTile::Item& item = tiles[placement.tile].items.emplace_back();
        item.outline = pieces[i].outline.turnedBy(turnAndScale(pieces[i], layout, placement));
        item.at = placement.at;
        item.piece = static_cast<int>(i);
    }
    for (const Obstacle& obstacle : sheet.obstacles)
        if (const auto tile = tiles.find(obstacle.tile); tile != tiles.end())
            tile->second.items.push_back({obstacle.outline, {}, PosedTile::obstacle});

    std::vector<PosedTile> result;
    result.reserve(tiles.size());
    for (auto& [number, tile] : tiles)
        result.push_back(std::move(tile));
    return result;
}

Box2 boundsOfPieces(const PosedTile& tile)
{
    Box2 bounds;
    for (const PosedTile::Item& item : tile.items)
        if (item.piece != PosedTile::obstacle)
            bounds.add(item.bounds());
    return bounds;
}

bool isSound(const std::vector<Piece>& pieces, const Sheet& sheet, const Layout& layout,
             const RunControl& control)
{
    if (!std::isfinite(layout.scale) || layout.scale <= 0.0)
        return false;
    const std::vector<PosedTile> tiles = poseTiles(pieces, sheet, layout);
    return std::all_of(tiles.begin(), tiles.end(),
                       [&](const PosedTile& tile) { return isSound(tile, sheet, control); });
}

} // namespace unfold3d

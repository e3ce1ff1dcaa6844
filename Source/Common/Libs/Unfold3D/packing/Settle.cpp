#include "Unfold3D/packing/Settle.h"

#include "Unfold3D/packing/BoxGrid.h"
#include "Unfold3D/packing/OutlineDistance.h"
#include "Unfold3D/packing/PosedPieces.h"

#include <algorithm>
#include <numeric>
#include <tbb/parallel_for.h>

namespace unfold3d
{

namespace
{

constexpr int maxRounds = 12;
/// A round that wins less than this share of the scale is the last.
constexpr double leastGain = 2e-4;
/// How far a piece goes at most in one pass, as a share of the tile: what is farther isn't looked
/// at.
constexpr double longestWay = 1.0 / 32.0;

struct Distances
{
    double stop;   ///< what a slide keeps to others
    double short_; ///< by which it ends earlier, so that it can slide on along the other
};

Distances distancesOf(const Sheet& sheet)
{
    const double slack = sheet.gap - sheet.clearance;
    return {sheet.clearance + 0.5 * slack, 0.125 * slack};
}

Box2 swept(Box2 box, Slide direction, double way)
{
    (direction == Slide::Left ? box.low.x : box.low.y) -= way;
    return box;
}

double lowEnd(const Box2& box, Slide direction)
{
    return direction == Slide::Left ? box.low.x : box.low.y;
}

/// Pieces in the order in which a slide reaches them.
std::vector<std::size_t> slideOrder(const PosedTile& tile, Slide direction)
{
    std::vector<double> ends;
    ends.reserve(tile.items.size());
    for (const PosedTile::Item& item : tile.items)
        ends.push_back(lowEnd(item.bounds(), direction));
    std::vector<std::size_t> order(tile.items.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return ends[a] < ends[b]; });
    return order;
}

/// Slides every piece of a tile as far as it goes, the foremost first.
void slideAll(PosedTile& tile, const Sheet& sheet, Slide direction, const RunControl& control)
{
    const Distances distances = distancesOf(sheet);
    const double limit = longestWay * (direction == Slide::Left ? sheet.width : sheet.height);
    std::vector<Box2> boxes;
    boxes.reserve(tile.items.size());
    for (const PosedTile::Item& item : tile.items)
        boxes.push_back(swept(item.bounds(), direction, limit));
    const BoxGrid grid(boxes);

    for (const std::size_t i : slideOrder(tile, direction)) {
        PosedTile::Item& item = tile.items[i];
        if (item.piece == PosedTile::obstacle)
            continue;
        control.checkpoint();
        const Box2 box = item.bounds();
        double way = std::min(limit, lowEnd(box, direction) - sheet.margin);
        if (way <= 0.0)
            continue;
        grid.visit(swept(box.inflatedBy(distances.stop), direction, way), [&](int other) {
            const auto j = static_cast<std::size_t>(other);
            if (j == i)
                return;
            const double free = freeWay(item.placed(), tile.items[j].placed(), direction,
                                        distances.stop, way + distances.short_);
            way = std::min(way, free - distances.short_);
        });
        if (way > 0.0)
            item.at -= direction == Slide::Left ? Vec2{way, 0.0} : Vec2{0.0, way};
    }
}

/// By how much the pieces can grow, seen from the lower left corner within the margin.
double growth(const std::vector<PosedTile>& tiles, const Sheet& sheet)
{
    double factor = std::numeric_limits<double>::infinity();
    for (const PosedTile& tile : tiles) {
        const Box2 bounds = boundsOfPieces(tile);
        if (bounds.high.x > sheet.margin)
            factor = std::min(factor, sheet.innerWidth() / (bounds.high.x - sheet.margin));
        if (bounds.high.y > sheet.margin)
            factor = std::min(factor, sheet.innerHeight() / (bounds.high.y - sheet.margin));
    }
    return std::max(1.0, factor);
}

void takePlaces(const std::vector<PosedTile>& tiles, Layout& layout)
{
    for (const PosedTile& tile : tiles)
        for (const PosedTile::Item& item : tile.items)
            if (item.piece != PosedTile::obstacle)
                layout.placements[static_cast<std::size_t>(item.piece)].at = item.at;
}

/// All distances grow alike, so none gets too small.
void grow(Layout& layout, const Sheet& sheet, double factor)
{
    const Vec2 corner{sheet.margin, sheet.margin};
    layout.scale *= factor;
    for (Placement& placement : layout.placements)
        placement.at = corner + factor * (placement.at - corner);
}

} // namespace

Layout settle(const std::vector<Piece>& pieces, const Sheet& sheet, Layout layout, double maxScale,
              const RunControl& control)
{
    for (int round = 0; round < maxRounds; ++round) {
        std::vector<PosedTile> tiles = poseTiles(pieces, sheet, layout);
        tbb::parallel_for(std::size_t{0}, tiles.size(), [&](std::size_t i) {
            slideAll(tiles[i], sheet, Slide::Down, control);
            slideAll(tiles[i], sheet, Slide::Left, control);
        });
        takePlaces(tiles, layout);
        if (!sheet.obstacles.empty())
            break;
        const double factor = std::min(growth(tiles, sheet), maxScale / layout.scale);
        if (factor > 1.0)
            grow(layout, sheet, factor);
        if (factor < 1.0 + leastGain)
            break;
    }
    return layout;
}

} // namespace unfold3d

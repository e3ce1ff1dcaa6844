#include "Unfold3D/packing/Settle.h"

#include "Unfold3D/packing/BoxGrid.h"
#include "Unfold3D/packing/OutlineDistance.h"
#include "Unfold3D/packing/PosedPieces.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>
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
/// Straight ways of a piece in one pass. It bends where something stands in its way.
constexpr int waysInPass = 4;
/// Where the pieces are pulled in turn, before each is brought to length 1.
constexpr std::array<Vec2, 2> pulls{{{-0.3, -1.0}, {-1.0, -0.3}}};
/// A piece doesn't follow what stands in its way when that takes less than this share of the pull
/// along: it would creep.
constexpr double leastPull = 0.05;

Vec2 normalised(Vec2 v)
{
    return (1.0 / length(v)) * v;
}

struct Distances
{
    double stop;  ///< what a moving piece keeps to others
    double early; ///< by which it stops earlier, so that it can go on along the other
};

Distances distancesOf(const Sheet& sheet)
{
    const double slack = sheet.gap - sheet.clearance;
    return {sheet.clearance + 0.5 * slack, 0.125 * slack};
}

/// The pieces of one tile while they are pulled together.
class Pass
{
public:
    Pass(PosedTile& tile, const Sheet& sheet, Vec2 pull)
        : tile_(tile), sheet_(sheet), pull_(pull), distances_(distancesOf(sheet)),
          reach_(longestWay * std::max(sheet.width, sheet.height)), grid_(reachableBoxes())
    {}

    /// Moves every piece as far as it goes, the foremost first.
    void run(const RunControl& control)
    {
        for (const std::size_t i : order()) {
            control.checkpoint();
            if (tile_.items[i].piece != PosedTile::obstacle)
                move(i);
        }
    }

private:
    std::vector<Box2> reachableBoxes() const
    {
        std::vector<Box2> boxes;
        boxes.reserve(tile_.items.size());
        for (const PosedTile::Item& item : tile_.items)
            boxes.push_back(item.piece == PosedTile::obstacle ? item.bounds()
                                                              : item.bounds().inflatedBy(reach_));
        return boxes;
    }

    std::vector<std::size_t> order() const
    {
        std::vector<double> ahead;
        ahead.reserve(tile_.items.size());
        for (const PosedTile::Item& item : tile_.items)
            ahead.push_back(dot(item.bounds().low, pull_));
        std::vector<std::size_t> order(tile_.items.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        std::stable_sort(order.begin(), order.end(),
                         [&](std::size_t a, std::size_t b) { return ahead[a] > ahead[b]; });
        return order;
    }

    /// How far the piece can go before it reaches the margin of the tile.
    FreeWay wayToMargin(const Box2& box, Vec2 direction, double limit) const
    {
        FreeWay way{limit, false, {}};
        const auto meet = [&](double room, double speed, Vec2 normal) {
            if (speed > 0.0 && room < speed * way.length)
                way = {std::max(0.0, room / speed), true, normal};
        };
        meet(box.low.x - sheet_.margin, -direction.x, {1.0, 0.0});
        meet(sheet_.width - sheet_.margin - box.high.x, direction.x, {-1.0, 0.0});
        meet(box.low.y - sheet_.margin, -direction.y, {0.0, 1.0});
        meet(sheet_.height - sheet_.margin - box.high.y, direction.y, {0.0, -1.0});
        return way;
    }

    FreeWay wayOf(std::size_t i, Vec2 direction, double limit) const
    {
        const PosedTile::Item& item = tile_.items[i];
        const Box2 box = item.bounds();
        FreeWay way = wayToMargin(box, direction, limit);
        const Box2 swept = sweptBox(box.inflatedBy(distances_.stop), direction, way.length);
        grid_.visit(swept, [&](int other) {
            const auto j = static_cast<std::size_t>(other);
            if (j == i || way.length <= 0.0 || !swept.meets(tile_.items[j].bounds()))
                return;
            FreeWay free = freeWay(item.placed(), tile_.items[j].placed(), direction,
                                   distances_.stop, way.length + distances_.early);
            free.length -= distances_.early;
            if (free.isBlocked && free.length < way.length)
                way = free;
        });
        way.length = std::max(0.0, way.length);
        return way;
    }

    /// Follows the pull, then along what stands in the way, as long as that still follows it.
    void move(std::size_t i)
    {
        double left = reach_;
        Vec2 direction = pull_;
        std::optional<Vec2> before; ///< the normal of what the piece moves along
        for (int ways = 0; ways < waysInPass && left > 0.0; ++ways) {
            const FreeWay way = wayOf(i, direction, left);
            tile_.items[i].at += way.length * direction;
            left -= way.length;
            if (!way.isBlocked)
                return;
            const Vec2 along = pull_ - dot(pull_, way.normal) * way.normal;
            const double follows = length(along);
            const bool isBack = along.x > 0.0 || along.y > 0.0; // would need the room again
            const bool isWedged = before && dot(along, *before) < 0.0;
            if (follows < leastPull || isBack || isWedged)
                return;
            direction = (1.0 / follows) * along;
            before = way.normal;
        }
    }

    PosedTile& tile_;
    const Sheet& sheet_;
    Vec2 pull_;
    Distances distances_;
    double reach_;
    BoxGrid grid_;
};

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
            for (const Vec2 pull : pulls)
                Pass(tiles[i], sheet, normalised(pull)).run(control);
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

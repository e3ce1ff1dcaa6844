#include "Unfold3D/packing/BoxRoom.h"

#include "Unfold3D/packing/Piece.h"

#include <algorithm>

namespace unfold3d
{

namespace
{

void improve(BoxSpot& best, std::span<const Box2> rectangles, std::span<const BoxPose> poses,
             double weight, int tile)
{
    for (const BoxPose& pose : poses)
        for (const Box2& free : rectangles) {
            const double overU = free.width() - pose.width;
            const double overV = free.height() - pose.height;
            if (overU < 0.0 || overV < 0.0)
                continue;
            const double score = std::min(overU, overV) / weight;
            if (score > best.score)
                continue;
            const BoxSpot spot{score, std::max(overU, overV), tile, pose, free};
            if (spot.isBetterThan(best))
                best = spot;
        }
}

} // namespace

void BoxRoom::open(int tile)
{
    const double gap = sheet_.gap;
    const Vec2 low{sheet_.margin, sheet_.margin};
    const Vec2 size{sheet_.innerWidth() + gap, sheet_.innerHeight() + gap};
    FreeRectangles& room = tiles_.try_emplace(tile, Box2{low, low + size}).first->second;
    for (const Obstacle& obstacle : sheet_.obstacles)
        if (obstacle.tile == tile)
            // What lies to its left and below keeps away by the gap that it takes itself.
            room.take(
                {obstacle.outline.bounds().low, obstacle.outline.bounds().high + Vec2{gap, gap}});
}

bool BoxRoom::openNext()
{
    int tile = 0;
    while (isOpen(tile))
        ++tile;
    if (tile >= sheet_.tileCount())
        return false;
    open(tile);
    return true;
}

void BoxRoom::take(const BoxSpot& spot)
{
    tiles_.at(spot.tile).take(spot.box());
}

BoxSpot BoxRoom::best(std::span<const BoxPose> poses, double weight, int tile) const
{
    BoxSpot best;
    for (const auto& [number, rectangles] : tiles_)
        if (tile == Piece::anyTile || tile == number)
            improve(best, rectangles.all(), poses, weight, number);
    return best;
}

BoxSpot BoxRoom::bestAfter(const BoxSpot& taken, const BoxSpot& known,
                           std::span<const BoxPose> poses, double weight, int tile) const
{
    if (!known.isFound())
        return known; // what is new lies within what was there before
    if (known.tile == taken.tile && overlap(known.free, taken.box()))
        return best(poses, weight, tile);
    BoxSpot spot = known;
    if (tile == Piece::anyTile || tile == taken.tile)
        improve(spot, tiles_.at(taken.tile).added(), poses, weight, taken.tile);
    return spot;
}

} // namespace unfold3d

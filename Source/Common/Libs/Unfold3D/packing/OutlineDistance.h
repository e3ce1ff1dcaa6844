#pragma once

#include "Unfold3D/packing/OutlineTree.h"

namespace unfold3d
{

/// An outline at a place.
struct PlacedOutline
{
    const OutlineTree* outline = nullptr;
    Vec2 at; ///< where its origin lies

    Box2 bounds() const { return outline->bounds().movedBy(at); }
};

/// The directions in which islands are pushed together.
enum class Slide
{
    Left,
    Down
};

/// Do the outlines cross or come closer than `distance`? An outline that lies inside the region of
/// the other is not close for that. About the logarithm of the edges, plus those that are near.
bool isCloserThan(const PlacedOutline& a, const PlacedOutline& b, double distance);

/// Is a point in the region that the outline bounds?
bool covers(const PlacedOutline& region, Vec2 point);

/// How far `moving` can go in a direction, at most `limit`, before it is closer than `distance` to
/// `standing`. The way is not stopped by what it passes at that distance. The two must not be
/// closer at the start than that; where rounding made them so, the result may be 0.
double freeWay(const PlacedOutline& moving, const PlacedOutline& standing, Slide direction,
               double distance, double limit);

} // namespace unfold3d

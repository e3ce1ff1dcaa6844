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

/// Do the outlines cross or come closer than `distance`? An outline that lies inside the region of
/// the other is not close for that. About the logarithm of the edges, plus those that are near.
bool isCloserThan(const PlacedOutline& a, const PlacedOutline& b, double distance);

/// Is a point in the region that the outline bounds?
bool covers(const PlacedOutline& region, Vec2 point);

/// A straight way, and what ends it.
struct FreeWay
{
    double length = 0.0;
    bool isBlocked = false;
    Vec2 normal; ///< when it is blocked: from what stands in the way, of length 1
};

/// How far `moving` can go in a direction of length 1 before it is closer than `distance` to
/// `standing`; `limit` when it isn't stopped before. The way is not stopped by what it passes at
/// that distance. The two must not be closer at the start than that; where rounding made them so,
/// the result may be 0.
FreeWay freeWay(const PlacedOutline& moving, const PlacedOutline& standing, Vec2 direction,
                double distance, double limit);

/// A box and all that it passes on the way.
Box2 sweptBox(const Box2& box, Vec2 direction, double way);

} // namespace unfold3d

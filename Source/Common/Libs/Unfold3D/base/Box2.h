#pragma once

#include "Unfold3D/base/Vec.h"

#include <algorithm>
#include <limits>

namespace unfold3d
{

/// A rectangle along the axes. A new one is empty: it grows around what is added.
struct Box2
{
    Vec2 low{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Vec2 high{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

    bool isEmpty() const { return !(low.x <= high.x && low.y <= high.y); }
    double width() const { return high.x - low.x; }
    double height() const { return high.y - low.y; }
    Vec2 centre() const
    {
        // Halves first: the sum of two large numbers may overflow.
        return {0.5 * low.x + 0.5 * high.x, 0.5 * low.y + 0.5 * high.y};
    }

    void add(Vec2 p)
    {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    void add(const Box2& b)
    {
        low = {std::min(low.x, b.low.x), std::min(low.y, b.low.y)};
        high = {std::max(high.x, b.high.x), std::max(high.y, b.high.y)};
    }
    Box2 movedBy(Vec2 d) const { return {low + d, high + d}; }
    Box2 inflatedBy(double r) const { return {{low.x - r, low.y - r}, {high.x + r, high.y + r}}; }
    bool meets(const Box2& b) const
    {
        return low.x <= b.high.x && b.low.x <= high.x && low.y <= b.high.y && b.low.y <= high.y;
    }
    /// Whether the gap between the boxes is at most `margin` along both axes.
    bool isNear(const Box2& b, double margin) const
    {
        return low.x <= b.high.x + margin && b.low.x <= high.x + margin &&
               low.y <= b.high.y + margin && b.low.y <= high.y + margin;
    }
    bool contains(const Box2& b) const
    {
        return low.x <= b.low.x && b.high.x <= high.x && low.y <= b.low.y && b.high.y <= high.y;
    }
};

} // namespace unfold3d

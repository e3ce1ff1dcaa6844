#pragma once

#include "Unfold3D/base/Box2.h"

#include <vector>

namespace unfold3d
{

/// The room that is left in a rectangle: all largest free rectangles, which overlap each other.
class FreeRectangles
{
public:
    explicit FreeRectangles(const Box2& whole) : free_{whole} {}

    const std::vector<Box2>& all() const { return free_; }

    /// Takes a rectangle out of all of them. What only touches it stays.
    void take(const Box2& used);

private:
    std::vector<Box2> free_;
};

/// How well something of a size goes into a free rectangle: the room left along the shorter side
/// that remains, then along the longer. Less is better.
struct Leftover
{
    double shorter;
    double longer;

    friend bool operator<(const Leftover& a, const Leftover& b)
    {
        return a.shorter != b.shorter ? a.shorter < b.shorter : a.longer < b.longer;
    }
};

} // namespace unfold3d

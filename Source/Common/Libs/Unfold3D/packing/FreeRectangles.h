#pragma once

#include "Unfold3D/base/Box2.h"

#include <cstddef>
#include <span>
#include <vector>

namespace unfold3d
{

/// Have they more in common than their sides?
inline bool overlap(const Box2& a, const Box2& b)
{
    return a.low.x < b.high.x && b.low.x < a.high.x && a.low.y < b.high.y && b.low.y < a.high.y;
}

/// The room that is left in a rectangle: all largest free rectangles, which overlap each other.
class FreeRectangles
{
public:
    explicit FreeRectangles(const Box2& whole) : free_{whole} {}

    const std::vector<Box2>& all() const { return free_; }

    /// Those of them that the last take() made.
    std::span<const Box2> added() const { return std::span(free_).subspan(kept_); }

    /// Takes a rectangle out of all of them. What only touches it stays.
    void take(const Box2& used);

private:
    std::vector<Box2> free_;
    std::size_t kept_ = 0; ///< of them are older than the last take()
};

} // namespace unfold3d

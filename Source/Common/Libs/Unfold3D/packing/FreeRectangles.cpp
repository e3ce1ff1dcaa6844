#include "Unfold3D/packing/FreeRectangles.h"

#include <algorithm>

namespace unfold3d
{

namespace
{

/// The largest rectangles in `free` beside `used`, which overlaps it.
void addRemainders(const Box2& free, const Box2& used, std::vector<Box2>& remainders)
{
    if (used.low.x > free.low.x)
        remainders.push_back({free.low, {used.low.x, free.high.y}});
    if (used.high.x < free.high.x)
        remainders.push_back({{used.high.x, free.low.y}, free.high});
    if (used.low.y > free.low.y)
        remainders.push_back({free.low, {free.high.x, used.low.y}});
    if (used.high.y < free.high.y)
        remainders.push_back({{free.low.x, used.high.y}, free.high});
}

} // namespace

void FreeRectangles::take(const Box2& used)
{
    std::vector<Box2> cut;
    std::erase_if(free_, [&](const Box2& free) {
        if (!overlap(free, used))
            return false;
        addRemainders(free, used, cut);
        return true;
    });
    kept_ = free_.size();
    // What was cut can lie in another one; the others were largest before and still are.
    for (std::size_t i = 0; i < cut.size(); ++i) {
        const auto holdsIt = [&](const Box2& other) { return other.contains(cut[i]); };
        const bool isHeld =
            std::any_of(free_.begin(), free_.end(), holdsIt) ||
            std::any_of(cut.begin() + static_cast<std::ptrdiff_t>(i) + 1, cut.end(), holdsIt);
        if (!isHeld)
            free_.push_back(cut[i]);
    }
}

} // namespace unfold3d

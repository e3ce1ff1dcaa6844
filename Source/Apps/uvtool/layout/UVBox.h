#pragma once

#include <algorithm>
#include <array>
#include <limits>

namespace uvtool
{

/// An axis-aligned box of the UV plane, borders included. Empty until a point is put into it.
struct UVBox
{
    std::array<float, 2> lo{std::numeric_limits<float>::max(), std::numeric_limits<float>::max()};
    std::array<float, 2> hi{std::numeric_limits<float>::lowest(),
                            std::numeric_limits<float>::lowest()};

    bool isEmpty() const { return lo[0] > hi[0]; }

    void add(const std::array<float, 2>& point)
    {
        for (std::size_t axis = 0; axis < 2; ++axis) {
            lo[axis] = std::min(lo[axis], point[axis]);
            hi[axis] = std::max(hi[axis], point[axis]);
        }
    }
    void add(const UVBox& box)
    {
        add(box.lo);
        add(box.hi);
    }
    bool meets(const UVBox& other) const
    {
        return lo[0] <= other.hi[0] && other.lo[0] <= hi[0] && lo[1] <= other.hi[1] &&
               other.lo[1] <= hi[1];
    }
};

} // namespace uvtool

#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

namespace uvtool
{

/// An axis-aligned box in space. Empty until a point is put into it.
template <class Scalar>
struct Box3
{
    using Point = std::array<Scalar, 3>;
    static constexpr Scalar none = std::numeric_limits<Scalar>::infinity();

    Point lo{none, none, none};
    Point hi{-none, -none, -none};

    void add(const Point& point)
    {
        for (std::size_t k = 0; k < 3; ++k) {
            lo[k] = std::min(lo[k], point[k]);
            hi[k] = std::max(hi[k], point[k]);
        }
    }

    /// Infinite of an empty box.
    double diagonal() const
    {
        return std::hypot(double{hi[0]} - lo[0], double{hi[1]} - lo[1], double{hi[2]} - lo[2]);
    }
};

} // namespace uvtool

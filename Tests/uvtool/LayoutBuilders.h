#pragma once

#include "layout/UVLayout.h"

#include <array>
#include <cstdint>
#include <vector>

namespace uvtool::test
{

using Point = std::array<float, 2>;

/// A UV layout that owns its arrays.
struct TestLayout
{
    std::vector<Point> uvs;
    std::vector<std::uint32_t> corners;
    std::vector<std::int32_t> islands;

    operator UVLayout() const { return {uvs, corners, islands}; }

    void addTriangle(std::int32_t island, std::uint32_t a, std::uint32_t b, std::uint32_t c)
    {
        corners.insert(corners.end(), {a, b, c});
        islands.push_back(island);
    }

    /// A rectangle with UVs of its own, counter-clockwise, as two triangles:
    ///   3---2
    ///   | / |
    ///   0---1
    void addRectangle(std::int32_t island, Point lo, Point hi)
    {
        const auto first = static_cast<std::uint32_t>(uvs.size());
        uvs.insert(uvs.end(), {lo, {hi[0], lo[1]}, hi, {lo[0], hi[1]}});
        addTriangle(island, first, first + 1, first + 2);
        addTriangle(island, first, first + 2, first + 3);
    }
};

/// A square of n by n cells of two triangles each, over [lo, lo + side]^2; one island.
inline TestLayout gridLayout(std::uint32_t n, Point lo = {0, 0}, float side = 1)
{
    TestLayout layout;
    for (std::uint32_t row = 0; row <= n; ++row)
        for (std::uint32_t column = 0; column <= n; ++column)
            layout.uvs.push_back(
                {lo[0] + side * float(column) / float(n), lo[1] + side * float(row) / float(n)});
    for (std::uint32_t row = 0; row < n; ++row)
        for (std::uint32_t column = 0; column < n; ++column) {
            const std::uint32_t corner = row * (n + 1) + column;
            layout.addTriangle(0, corner, corner + 1, corner + n + 2);
            layout.addTriangle(0, corner, corner + n + 2, corner + n + 1);
        }
    return layout;
}

} // namespace uvtool::test

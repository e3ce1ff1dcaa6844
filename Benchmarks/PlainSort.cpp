#include "PlainSort.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>

namespace bench
{

void sortPlainly(std::vector<osg::Pnt3f> positions, const std::vector<unsigned int>& triangles)
{
    std::sort(positions.begin(), positions.end(), [](const auto& a, const auto& b) {
        return std::array{a[0], a[1], a[2]} < std::array{b[0], b[1], b[2]};
    });
    std::vector<std::array<unsigned int, 3>> corners(triangles.size() / 3);
    for (std::size_t t = 0; t < corners.size(); ++t) {
        std::copy_n(triangles.begin() + static_cast<std::ptrdiff_t>(3 * t), 3, corners[t].begin());
        std::sort(corners[t].begin(), corners[t].end());
    }
    std::sort(corners.begin(), corners.end());
    benchmark::DoNotOptimize(positions.data());
    benchmark::DoNotOptimize(corners.data());
}

} // namespace bench

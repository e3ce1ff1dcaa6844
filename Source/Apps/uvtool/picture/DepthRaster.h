#pragma once

#include "document/Document.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace uvtool
{

/// Which triangle is seen in each cell of a square raster, and how near it is. Cells count from the
/// upper left corner, row by row; the triangle with the greatest third coordinate is seen, of
/// equals the first.
class DepthRaster
{
public:
    static constexpr std::uint32_t nothing = 0xFFFFFFFFU;

    /// What is seen in a cell.
    struct Hit
    {
        std::uint32_t triangle = nothing;
        std::array<float, 3> weights{}; ///< of the triangle's corners, of sum 1
    };

    explicit DepthRaster(std::int32_t size)
        : size_(size), depths_(cellCount(), std::numeric_limits<double>::lowest()),
          hits_(cellCount())
    {}

    /// corners  in cells, and depth
    void draw(std::uint32_t triangle, const std::array<Vec3d, 3>& corners);

    std::int32_t size() const { return size_; }
    const Hit& hit(std::int32_t row, std::int32_t column) const { return hits_[cell(row, column)]; }
    double depth(std::int32_t row, std::int32_t column) const { return depths_[cell(row, column)]; }

private:
    std::size_t cellCount() const
    {
        return static_cast<std::size_t>(size_) * static_cast<std::size_t>(size_);
    }
    std::size_t cell(std::int32_t row, std::int32_t column) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(size_) +
               static_cast<std::size_t>(column);
    }

    std::int32_t size_;
    std::vector<double> depths_;
    std::vector<Hit> hits_;
};

} // namespace uvtool

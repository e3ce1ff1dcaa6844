#pragma once

#include "MeshUtils/SearchSpace.h"

#include <array>
#include <cstddef>
#include <numeric>
#include <span>
#include <vector>

/// A cube of a SearchSpace.
struct Cell
{
    std::array<float, 3> center = {0, 0, 0};
    float halfSize = 1;
    unsigned int halvings = 0; ///< from the cube that holds everything

    /// Halvings after which places are as good as equal: they are floats between -1 and 1.
    static constexpr unsigned int MaxHalvings = 30;

    /// Bit i is set on the upper side of axis i.
    [[nodiscard]] unsigned int octantOf(const std::array<float, 3>& place) const
    {
        unsigned int octant = 0;
        for (unsigned int i = 0; i < 3; ++i)
            octant |= (place[i] >= center[i] ? 1U : 0U) << i;
        return octant;
    }
    [[nodiscard]] Cell child(unsigned int octant) const
    {
        Cell result{center, halfSize / 2, halvings + 1};
        for (unsigned int i = 0; i < 3; ++i)
            result.center[i] += (octant >> i & 1U) != 0 ? result.halfSize : -result.halfSize;
        return result;
    }
};

/// Sorts triangles by the octants of cells in which their middles lie.
class OctantSort
{
public:
    using Ranks = std::array<unsigned int, 8>; ///< where each octant stands in the order
    using Bounds = std::array<std::size_t, 9>; ///< where the triangles of each rank begin

    explicit OctantSort(std::span<const SearchBox> boxes)
        : order_(boxes.size()), sorted_(boxes.size())
    {
        std::iota(order_.begin(), order_.end(), 0U);
        middles_.reserve(boxes.size());
        for (const SearchBox& box : boxes)
            middles_.push_back({(box.lower[0] + box.upper[0]) / 2,
                                (box.lower[1] + box.upper[1]) / 2,
                                (box.lower[2] + box.upper[2]) / 2});
    }

    [[nodiscard]] std::span<const unsigned int> order() const { return order_; }

    /// Sorts a range of the order, stably.
    Bounds sort(const Cell& cell, const Ranks& ranks, std::size_t begin, std::size_t end)
    {
        Bounds bounds = {};
        for (std::size_t i = begin; i < end; ++i)
            ++bounds[rankAt(cell, ranks, i) + 1];
        bounds[0] = begin;
        std::partial_sum(bounds.begin(), bounds.end(), bounds.begin());
        Bounds next = bounds;
        for (std::size_t i = begin; i < end; ++i)
            sorted_[next[rankAt(cell, ranks, i)]++] = order_[i];
        for (std::size_t i = begin; i < end; ++i)
            order_[i] = sorted_[i];
        return bounds;
    }

private:
    [[nodiscard]] unsigned int rankAt(const Cell& cell, const Ranks& ranks, std::size_t i) const
    {
        return ranks[cell.octantOf(middles_[order_[i]])];
    }

    std::vector<std::array<float, 3>> middles_;
    std::vector<unsigned int> order_;
    std::vector<unsigned int> sorted_;
};

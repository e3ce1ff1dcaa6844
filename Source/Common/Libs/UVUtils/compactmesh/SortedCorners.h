#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

/// The three compact ids of a triangle, ascending, and the corner that each is of; of equal ids
/// that of the earlier corner comes first.
///
/// Branches on the order of three corners are a toss-up, so that sorting goes by minimum and
/// maximum throughout.
class SortedCorners
{
public:
    SortedCorners(unsigned int a, unsigned int b, unsigned int c)
        : ids_{std::uint64_t{a} << 2U, std::uint64_t{b} << 2U | 1U, std::uint64_t{c} << 2U | 2U}
    {
        sortTwo(0, 1);
        sortTwo(1, 2);
        sortTwo(0, 1);
    }

    unsigned int id(std::size_t i) const { return static_cast<unsigned int>(ids_[i] >> 2U); }
    unsigned int corner(std::size_t i) const { return static_cast<unsigned int>(ids_[i] & 3U); }

    /// The corners of all three in one number, for cornerOf.
    unsigned int corners() const { return corner(0) | corner(1) << 2U | corner(2) << 4U; }
    static unsigned int cornerOf(unsigned int corners, unsigned int i)
    {
        return (corners >> (2 * i)) & 3U;
    }

private:
    void sortTwo(std::size_t a, std::size_t b)
    {
        const std::uint64_t low = std::min(ids_[a], ids_[b]);
        ids_[b] = std::max(ids_[a], ids_[b]);
        ids_[a] = low;
    }

    std::array<std::uint64_t, 3> ids_; ///< the id above, its corner in the lowest two bits
};

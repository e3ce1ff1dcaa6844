#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace uvtool
{

/// A UV layout as the check and the picture see it: a view of arrays that others own.
///
///   uvs               [uvCount]            u to the right, v upward
///   corners           [3 * triangleCount]  numbers of uvs, three a triangle, each below uvCount
///   islandOfTriangle  [triangleCount]      islands from 0 upward; a negative number leaves the
///                                          triangle out of everything
///
/// Two triangles hang together where they name the same two UVs, not where two UVs happen to have
/// the same value.
struct UVLayout
{
    std::span<const std::array<float, 2>> uvs;
    std::span<const std::uint32_t> corners;
    std::span<const std::int32_t> islandOfTriangle;

    std::size_t triangleCount() const { return islandOfTriangle.size(); }
    const std::array<float, 2>& point(std::size_t triangle, std::size_t corner) const
    {
        return uvs[corners[3 * triangle + corner]];
    }
};

} // namespace uvtool

#pragma once

#include "layout/OpenEdges.h"
#include "layout/UVLayout.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// The borders of islands as closed loops of UVs, each walked with its triangles on the left (on
/// the right where they are mirrored).
struct IslandOutlines
{
    std::vector<std::uint32_t> uvs;            ///< of one loop after another
    std::vector<std::uint32_t> loopOffsets{0}; ///< [loopCount + 1] into uvs
    std::vector<std::uint32_t> islandOffsets;  ///< [islandCount + 1] into the loops

    std::span<const std::uint32_t> loop(std::size_t number) const
    {
        return std::span(uvs).subspan(loopOffsets[number],
                                      loopOffsets[number + 1] - loopOffsets[number]);
    }
};

/// Chains the open edges of each island. Every walk closes, because as many open edges end at a UV
/// as begin there; where several begin, loops may touch or cross in that UV. Linear.
///
/// groupOfTriangle  [triangleCount]  islands below islandCount, as openEdges() takes them
/// open                              openEdges() of these groups
IslandOutlines chainOutlines(const UVLayout& layout, std::span<const std::int32_t> groupOfTriangle,
                             std::span<const TriangleEdge> open, std::size_t islandCount);

} // namespace uvtool

#pragma once

#include "layout/UVBox.h"
#include "layout/UVLayout.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace uvtool
{

/// What of a layout is drawn, and the figures beside it.
struct PictureContent
{
    /// [triangleCount] islands renumbered without gaps; -1 for triangles that are left out
    std::vector<std::int32_t> islandOfTriangle;

    std::vector<UVBox> boundsOfIsland;            ///< [islandCount]
    std::vector<double> areaOfIsland;             ///< [islandCount] sums of unsigned areas
    std::vector<std::uint32_t> trianglesOfIsland; ///< [islandCount]
    std::vector<std::uint32_t> flipped;           ///< triangles that turn against their island
    bool flipsAreNatural = false;                 ///< see PictureOptions
    std::size_t triangleCount = 0;                ///< those drawn
    std::size_t nonFinite = 0;                    ///< those left out
    double area = 0;                              ///< sum over the islands
    UVBox bounds;                                 ///< of all islands; empty without one

    std::size_t islandCount() const { return areaOfIsland.size(); }
};

/// Linear in triangles, for islands numbered about from 0.
PictureContent collectContent(const UVLayout& layout);

} // namespace uvtool

#pragma once

#include "layout/UVLayout.h"

#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// Sides of the triangles of a layout that are to lie along an axis; side 3 * t + k runs from
/// corner k of triangle t to the next one. Ascending.
struct HeldSides
{
    std::vector<std::uint32_t> horizontal;
    std::vector<std::uint32_t> vertical;

    bool isEmpty() const { return horizontal.empty() && vertical.empty(); }
};

/// The sides of some of the triangles, ascending, as sides of a list of these alone.
HeldSides sidesAmong(std::span<const std::uint32_t> triangles, const HeldSides& held);

/// How far a straight line may be off, as a share of the size of the layout.
inline constexpr double straightEnough = 1e-6;

/// Sides along one axis that hang together through UVs.
struct HeldLine
{
    std::vector<std::uint32_t> uvs; ///< numbers, ascending
    std::int32_t island = 0;
    /// How far its UVs lie apart across it, as a share of the longer side of the box around the
    /// layout.
    double deviation = 0.0;

    bool isStraight() const { return deviation <= straightEnough; }
};

/// The lines of a layout: horizontal ones, then vertical ones, each kind by its lowest UV. Sides of
/// triangles that the layout leaves out are passed over. Linear, but for the sorting of UVs.
std::vector<HeldLine> findLines(const UVLayout& layout, const HeldSides& held);

} // namespace uvtool

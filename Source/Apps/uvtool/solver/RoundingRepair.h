#pragma once

#include "document/Document.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// Readies a layout for a file in which v runs downward: moves each v to the nearest number whose
/// distance to 1 is a float as well, so that turning v changes nothing.
void roundForTurnedV(std::vector<Vec2f>& uvs);

/// Turns triangles back that a rounding to floats has turned over. Their vertices move by a few
/// steps of the float grid, to where the triangles around them are safest.
///
/// triangles    [3 * n]  vertices
/// wantedTurns  [n]      1 or -1 as the triangle turned before the rounding; 0: doesn't matter
/// vIsTurned             keep to what roundForTurnedV gives
/// uvs          [vertex] finite
/// isFixed      [vertex] 1 for those that must not move; empty where all may
///
/// Where a layout is too thin for floats some stay as they are. Linear where nothing is wrong.
void repairRounding(std::span<const std::uint32_t> triangles,
                    std::span<const std::int8_t> wantedTurns, bool vIsTurned,
                    std::vector<Vec2f>& uvs, std::span<const char> isFixed = {});

/// How triangles turn: 1, -1, or 0 for those without an area.
std::vector<std::int8_t> turnsOf(std::span<const std::uint32_t> triangles,
                                 std::span<const Vec2f> uvs);

} // namespace uvtool

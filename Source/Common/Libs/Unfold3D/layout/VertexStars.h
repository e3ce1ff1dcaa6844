#pragma once

#include "Unfold3D/base/Box2.h"
#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/OffsetArray.h"
#include "Unfold3D/base/Vec.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

namespace unfold3d
{

/// Which coordinates of a vertex must stay as they are rounded; bits that can be joined.
enum HeldCoordinate : std::uint8_t
{
    HoldNone = 0,
    HoldU = 1,
    HoldV = 2
};

/// The value of the nearest float.
inline double toFloat(double value)
{
    // GCC 12 takes two such conversions side by side for nothing at -O2, unless it has to store
    // what is between them.
    const volatile float rounded = static_cast<float>(value);
    return static_cast<double>(rounded);
}

/// How many steps of the float grid a vertex may leave the box of its layout.
inline constexpr double maxStepsOut = 2.0;

/// A layout of floats whose vertices are moved about by small steps, and how safe the triangles
/// around each of them are from being flipped.
class VertexStars
{
public:
    /// All are kept by reference. held [vertex] may be empty.
    VertexStars(std::span<const Triangle> triangles, std::vector<Vec2>& uv,
                std::span<const std::uint8_t> held);

    /// Distance of neighbouring floats where they are farthest apart in this layout.
    double step() const { return step_; }
    Vec2 at(int v) const { return uv_[static_cast<std::size_t>(v)]; }
    /// The corners of a vertex; corner c belongs to triangle c / 3.
    std::span<const int> cornersOf(int v) const { return cornersOfVertex_[v]; }

    /// Whether a triangle turns counter-clockwise.
    bool isSound(int triangle) const;

    /// How safe the triangles around a vertex are: the least of their heights, in lengths of the
    /// layout and negative for a flipped one, then their sum. Heights beyond some steps count as
    /// that many. The first number is positive exactly when none is flipped.
    std::array<double, 2> safetyAt(int v) const;

    /// Puts a vertex to one of 25 places, `stride` apart and around where it is, for which `rank`,
    /// a function without arguments that looks at the layout, is largest; of equal ones to the
    /// nearest. Returns whether it moved. Places further out of the box of the whole layout than
    /// maxStepsOut are passed over: there is the margin that a layout was packed with.
    template <class Rank>
    bool moveToBest(int v, double stride, const Rank& rank);

private:
    double heightOf(int triangle) const;

    std::span<const Triangle> triangles_;
    std::vector<Vec2>& uv_;
    std::span<const std::uint8_t> held_;
    OffsetArray<int> cornersOfVertex_;
    double step_;
    Box2 room_; ///< what no vertex leaves
};

template <class Rank>
bool VertexStars::moveToBest(int v, double stride, const Rank& rank)
{
    constexpr int reach = 2;
    const auto index = static_cast<std::size_t>(v);
    const int holds = held_.empty() ? 0 : held_[index];
    const int reachU = (holds & HoldU) != 0 ? 0 : reach;
    const int reachV = (holds & HoldV) != 0 ? 0 : reach;
    const Vec2 home = uv_[index];
    Vec2 best = home;
    auto bestRank = rank();
    int bestWay = 0;
    for (int i = -reachU; i <= reachU; ++i)
        for (int j = -reachV; j <= reachV; ++j) {
            uv_[index] = {toFloat(home.x + i * stride), toFloat(home.y + j * stride)};
            if (!room_.contains({uv_[index], uv_[index]}))
                continue;
            const auto present = rank();
            const int way = i * i + j * j;
            if (present > bestRank || (present == bestRank && way < bestWay)) {
                best = uv_[index];
                bestRank = present;
                bestWay = way;
            }
        }
    uv_[index] = best;
    return !(best == home);
}

} // namespace unfold3d

#include "Unfold3D/commands/ExportedLayout.h"

#include "Unfold3D/base/ExactPredicates.h"
#include "Unfold3D/layout/FloatLayout.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <utility>

#include <tbb/parallel_for.h>

namespace unfold3d
{

namespace
{

/// Share of its longest side below which the height of a triangle in the layout is what rounding
/// left of a line.
constexpr double heightOfLine = 1e-12;

bool isLine(Vec2 a, Vec2 b, Vec2 c)
{
    const double squared = std::max({dot(b - a, b - a), dot(c - b, c - b), dot(a - c, a - c)});
    return std::abs(doubleArea(a, b, c)) <= heightOfLine * squared;
}

/// The triangles of an island by positions in its vertex list, each wound as it turns in the
/// layout, whatever way that is; those that have no area there are left out.
std::vector<Triangle> trianglesAsTheyTurn(const Session& session, int island)
{
    const std::span<const int> vertices = session.islands.vertices[island];
    std::vector<Triangle> result;
    for (const int t : session.islands.triangles[island]) {
        const Triangle& corner = session.mesh.triangles[static_cast<std::size_t>(t)];
        const auto at = [&](std::size_t i) {
            return session.uvs[static_cast<std::size_t>(corner[i])];
        };
        const int side = orient2d(at(0), at(1), at(2));
        if (side == 0 || isLine(at(0), at(1), at(2)))
            continue;
        Triangle local{};
        for (std::size_t i = 0; i < 3; ++i)
            local[i] = static_cast<int>(
                std::lower_bound(vertices.begin(), vertices.end(), corner[i]) - vertices.begin());
        if (side < 0)
            std::swap(local[1], local[2]);
        result.push_back(local);
    }
    return result;
}

/// [vertex] what rounding must not move: vertices that a command left where they are, and what the
/// pins of edges hold.
std::vector<std::uint8_t> heldCoordinates(const Session& session)
{
    std::vector<std::uint8_t> held(session.uvs.size(), HoldNone);
    for (std::size_t v = 0; v < held.size(); ++v)
        if (session.isFixed[v])
            held[v] = HoldU | HoldV;
    if (session.pins.empty() || !session.edges)
        return held;
    for (std::size_t e = 0; e < session.pins.size(); ++e) {
        if (session.pins[e] == EdgePin::Free)
            continue;
        for (const int v : session.edges->vertices[e])
            held[static_cast<std::size_t>(v)] |=
                session.pins[e] == EdgePin::Horizontal ? HoldV : HoldU;
    }
    return held;
}

bool isRoundedTo(Vec2 point, Vec2 rounded)
{
    return toFloat(point.x) == rounded.x && toFloat(point.y) == rounded.y;
}

/// Moves the vertices of an island that its rounding would not leave where they are sound; returns
/// what is left all the same.
FloatRounding roundIsland(const Session& session, int island,
                          std::span<const std::uint8_t> heldOfVertex, std::vector<Vec2>& layout)
{
    const std::span<const int> vertices = session.islands.vertices[island];
    std::vector<Vec2> uv;
    std::vector<std::uint8_t> held;
    for (const int v : vertices) {
        uv.push_back(session.uvs[static_cast<std::size_t>(v)]);
        held.push_back(heldOfVertex[static_cast<std::size_t>(v)]);
    }
    const FloatRounding rounding = roundToFloats(trianglesAsTheyTurn(session, island), uv, held);
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        Vec2& exported = layout[static_cast<std::size_t>(vertices[i])];
        if (!isRoundedTo(exported, uv[i]))
            exported = uv[i];
    }
    for (const int v : vertices) {
        if (session.isFixed[static_cast<std::size_t>(v)])
            continue;
        const int anchor = session.islands.anchor[static_cast<std::size_t>(v)];
        layout[static_cast<std::size_t>(v)] = layout[static_cast<std::size_t>(anchor)];
    }
    return rounding;
}

} // namespace

ExportedLayout exportedLayout(const Session& session, const RunControl& control)
{
    ExportedLayout result;
    result.uv = session.uvs;
    const std::vector<std::uint8_t> held = heldCoordinates(session);
    std::atomic<int> flips = 0;
    std::atomic<int> touches = 0;
    tbb::parallel_for(0, session.islands.count(), [&](int island) {
        control.checkpoint();
        if (!session.isChanged[static_cast<std::size_t>(island)])
            return;
        const FloatRounding rounding = roundIsland(session, island, held, result.uv);
        flips += rounding.flipsLeft;
        touches += rounding.touchesLeft;
    });
    result.flips = flips;
    result.touches = touches;
    return result;
}

} // namespace unfold3d

#include "Unfold3D/mesh/Winding.h"

#include <algorithm>
#include <utility>

namespace unfold3d
{

namespace
{

constexpr char unseen = -1;

bool runTheSameWay(std::span<const Triangle> triangles, int h, int twin)
{
    return originOf(triangles, h) == originOf(triangles, twin);
}

/// Spreads the side of `first` over all triangles that hang together with it. False when a triangle
/// would have to face both sides; it keeps the one that it got first.
bool spreadSide(std::span<const Triangle> triangles, const HalfEdges& edges, int first,
                std::vector<char>& isTurned, std::vector<int>& part)
{
    part.assign(1, first);
    isTurned[static_cast<std::size_t>(first)] = 0;
    bool isTwoSided = true;
    for (std::size_t next = 0; next < part.size(); ++next) {
        const int t = part[next];
        for (int h = 3 * t; h < 3 * t + 3; ++h) {
            const int twin = edges.twin[static_cast<std::size_t>(h)];
            if (twin < 0)
                continue;
            const bool differs = runTheSameWay(triangles, h, twin);
            const char side =
                static_cast<char>((isTurned[static_cast<std::size_t>(t)] != 0) != differs);
            char& known = isTurned[static_cast<std::size_t>(twin / 3)];
            if (known == unseen) {
                known = side;
                part.push_back(twin / 3);
            } else if (known != side) {
                isTwoSided = false;
            }
        }
    }
    return isTwoSided;
}

void letMajorityStay(const std::vector<int>& part, std::vector<char>& isTurned)
{
    const auto turned = std::count_if(part.begin(), part.end(), [&](int t) {
        return isTurned[static_cast<std::size_t>(t)] != 0;
    });
    if (2 * turned <= static_cast<std::ptrdiff_t>(part.size()))
        return;
    for (const int t : part)
        isTurned[static_cast<std::size_t>(t)] ^= 1;
}

} // namespace

Sides findSides(std::span<const Triangle> triangles, const HalfEdges& edges)
{
    Sides sides;
    sides.isTurned.assign(triangles.size(), unseen);
    std::vector<int> part;
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        if (sides.isTurned[t] != unseen)
            continue;
        if (!spreadSide(triangles, edges, static_cast<int>(t), sides.isTurned, part))
            sides.oneSided = true;
        letMajorityStay(part, sides.isTurned);
    }
    return sides;
}

Obstacle windConsistently(std::vector<Triangle>& triangles, int vertexCount)
{
    const HalfEdges edges = pairHalfEdges(triangles, vertexCount);
    if (std::find(edges.twin.begin(), edges.twin.end(), HalfEdges::crowded) != edges.twin.end())
        return Obstacle::CrowdedEdge;
    const Sides sides = findSides(triangles, edges);
    if (sides.oneSided)
        return Obstacle::OneSided;
    for (std::size_t t = 0; t < triangles.size(); ++t)
        if (sides.isTurned[t])
            std::swap(triangles[t][1], triangles[t][2]);
    return Obstacle::None;
}

} // namespace unfold3d

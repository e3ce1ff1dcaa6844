#pragma once

#include "Unfold3D/linear/VertexGraph.h"

#include <cstdint>
#include <span>
#include <vector>

namespace unfold3d
{

/// Scrambles a number: all bits of the result depend on all of it (the finaliser of splitmix64).
inline std::uint64_t scrambled(std::uint64_t x)
{
    x += 0x9e3779b97f4a7c15ULL;
    x = (x ^ (x >> 30U)) * 0xbf58476d1ce4e5b9ULL;
    x = (x ^ (x >> 27U)) * 0x94d049bb133111ebULL;
    return x ^ (x >> 31U);
}

/// A number for each vertex that tells its connections and those of its surroundings, some rings
/// wide (colour refinement, Weisfeiler and Leman 1968): the same however vertices and triangles are
/// numbered, wherever the mesh lies and of whatever size it is, and for both halves of a mesh whose
/// connections are symmetric. On a scan next to all vertices get different ones.
///
/// graph  the vertices of a surface
/// kinds  [vertex]  told apart from the beginning
/// Linear.
std::vector<std::uint64_t> connectionHashes(const VertexGraph& graph, std::span<const char> kinds);

} // namespace unfold3d

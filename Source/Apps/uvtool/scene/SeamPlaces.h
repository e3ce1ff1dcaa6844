#pragma once

#include "mesh/EdgeFile.h"
#include "scene/SceneEdges.h"
#include "scene/SceneIslands.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// Edges that a user named by their vertices, sorted by what can be done with them.
struct NamedEdges
{
    std::vector<std::size_t> joined; ///< of several triangles
    std::vector<std::size_t> borders;
    std::size_t notInMesh = 0; ///< pairs of vertices that no triangle has as a side
};

/// Vertices that lie on one another in the compact mesh stand for each other; an edge that is named
/// twice counts once. Ascending.
NamedEdges findNamedEdges(const SceneEdges& edges, std::span<const VertexPair> pairs);

/// A side of one border at each place where several borders of a scene lie on one another, from end
/// to end and with equal positions.
///
/// isChosen         [island] 1 for islands whose borders count
/// otherIslandOnly  only places where borders of two islands meet
std::vector<std::uint32_t> touchingBorders(const SceneGeometry& scene, const SceneEdges& edges,
                                           const SceneIslands& found,
                                           const std::vector<char>& isChosen, bool otherIslandOnly);

/// [island] 1 for those that one of these vertices of the scene lies in.
std::vector<char> islandsOf(const SceneGeometry& scene, const SceneIslands& found,
                            std::span<const unsigned int> seeds);

} // namespace uvtool

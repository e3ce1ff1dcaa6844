#pragma once

#include "mesh/EdgeGroups.h"
#include "scene/SceneGeometry.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace uvtool
{

/// The edges of a scene as its compact mesh has them: one for all pairs of vertices that lie on one
/// another there. Triangles that name a compact vertex twice have none.
class SceneEdges
{
public:
    /// compactOfVertex  [vertex of the scene] below compactVertices
    SceneEdges(const SceneGeometry& scene, std::span<const std::uint32_t> compactOfVertex,
               std::size_t compactVertices);

    std::size_t size() const { return groups_.size(); }
    /// The triangle sides along an edge, numbered as in EdgeGroups over the triangles of the scene.
    std::span<const std::uint32_t> sides(std::size_t edge) const { return groups_[edge]; }
    /// Does one triangle only have it?
    bool isBorder(std::size_t edge) const { return groups_[edge].size() == 1; }
    /// Do two sides of an edge run in one direction?
    bool runAlike(std::uint32_t side, std::uint32_t other) const
    {
        return triangles_[side] == triangles_[other];
    }

    /// The edge between two vertices of the scene, or any that lie on them; none where no triangle
    /// has one. A binary search.
    std::optional<std::size_t> find(std::uint32_t a, std::uint32_t b) const;

    /// [side] 1 for the sides of edges that aren't borders, else 0.
    std::vector<char> joinedSides() const;

private:
    std::vector<std::uint32_t> compactOfVertex_;
    std::vector<std::uint32_t> triangles_; ///< [3 * triangle] compact vertices
    EdgeGroups groups_;
};

/// The same edges as pairs of scene vertices, flat: every pair of vertices that a triangle has as
/// a side along one of them. Pairs that surfaces, or the two sides of a hard edge, have of their
/// own are all named, so that each of these is told of its edge.
std::vector<unsigned int> vertexPairsOf(const SceneGeometry& scene, const SceneEdges& edges,
                                        std::span<const std::size_t> chosen);

} // namespace uvtool

#pragma once

#include "mesh/EdgeGroups.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// The edges of a triangle mesh, some of them marked as seams.
///
/// Triangles are manifold: every edge belongs to one triangle or to two that run along it in
/// opposite directions. An edge of one triangle is a border, and never a seam.
class SeamSet
{
public:
    /// triangles  [3 * triangleCount] vertices below vertexCount; have to outlive the set
    SeamSet(std::span<const std::uint32_t> triangles, std::size_t vertexCount);

    std::size_t edgeCount() const { return edges_.size(); }
    std::size_t seamCount() const { return seamCount_; }
    bool isSeam(std::size_t edge) const { return isSeam_[edge] != 0; }
    bool isBorder(std::size_t edge) const { return edges_[edge].size() == 1; }
    /// A seam or a border: triangles don't go on in each other there.
    bool isOpen(std::size_t edge) const { return isSeam(edge) || isBorder(edge); }

    /// The triangle sides along an edge, numbered as in EdgeGroups.
    std::span<const std::uint32_t> sides(std::size_t edge) const { return edges_[edge]; }
    std::uint32_t edgeOfSide(std::uint32_t side) const { return edgeOfSide_[side]; }
    std::array<std::uint32_t, 2> ends(std::size_t edge) const;

    /// How many seams end at a vertex, and whether a border does.
    std::uint32_t seamsAt(std::uint32_t vertex) const { return seamsAt_[vertex]; }
    bool isAtBorder(std::uint32_t vertex) const { return isAtBorder_[vertex] != 0; }

    void mark(std::size_t edge, bool isSeam);
    /// Marks the edges between pairs of vertices, flat, and nothing where there is no such edge, or
    /// a border.
    void markPairs(std::span<const unsigned int> pairs);

    /// The ends of all seams, flat.
    std::vector<unsigned int> pairs() const;

private:
    std::span<const std::uint32_t> triangles_;
    EdgeGroups edges_;
    std::vector<std::uint32_t> edgeOfSide_;
    std::vector<char> isSeam_;
    std::vector<std::uint32_t> seamsAt_;
    std::vector<char> isAtBorder_;
    std::size_t seamCount_ = 0;
};

} // namespace uvtool

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace uvtool
{

/// The sides of triangles, grouped by the undirected edge that they run along.
///
/// Side 3 * t + k runs from corner k of triangle t to the next one. Groups are sorted by their
/// lower, then by their higher vertex; the sides of a group ascend. Triangles that name a vertex
/// twice have no sides here.
class EdgeGroups
{
public:
    /// triangles  [3 * triangleCount] vertices below vertexCount. Linear in triangles, but for the
    /// sorting of the sides at one vertex.
    EdgeGroups(std::span<const std::uint32_t> triangles, std::size_t vertexCount);

    std::size_t size() const { return offsets_.size() - 1; }
    std::span<const std::uint32_t> operator[](std::size_t group) const
    {
        return std::span(sides_).subspan(offsets_[group], offsets_[group + 1] - offsets_[group]);
    }

private:
    std::vector<std::uint32_t> sides_;
    std::vector<std::uint32_t> offsets_;
};

/// The group between two vertices; none where no triangle has such a side. A binary search.
///
/// triangles  that the groups were made of
std::optional<std::size_t> findEdge(const EdgeGroups& edges,
                                    std::span<const std::uint32_t> triangles, std::uint32_t a,
                                    std::uint32_t b);

/// True for a triangle that names a vertex twice.
inline bool repeatsVertex(std::span<const std::uint32_t> triangles, std::size_t triangle)
{
    const std::uint32_t* const v = triangles.data() + 3 * triangle;
    return v[0] == v[1] || v[1] == v[2] || v[2] == v[0];
}

/// The corner behind `side`'s own, where the side ends.
inline std::uint32_t endCorner(std::uint32_t side)
{
    return side % 3 == 2 ? side - 2 : side + 1;
}

/// The corner of the triangle that the side doesn't touch.
inline std::uint32_t oppositeCorner(std::uint32_t side)
{
    return side % 3 == 0 ? side + 2 : side - 1;
}

} // namespace uvtool

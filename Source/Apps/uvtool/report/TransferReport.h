#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace uvtool
{

/// What UVs were carried over from.
struct TransferReport
{
    /// A slot that was carried over, as it is there.
    struct Slot
    {
        std::size_t slot = 0;
        std::size_t islands = 0;
        std::size_t borderEdges = 0;
        std::size_t unmappedTriangles = 0;
    };

    std::string source;
    std::string method; ///< as the option calls it
    std::size_t surfaces = 0;
    std::size_t triangles = 0;
    double size = 0.0; ///< diagonal of its box, in the scene
    std::vector<Slot> slots;
};

/// What a geometry got in a slot.
struct TransferCounts
{
    std::size_t slot = 0;
    std::size_t islands = 0;
    std::size_t borderEdges = 0;
    std::size_t newVertices = 0; ///< places that a seam goes through get one for each further UV
    std::size_t trianglesWithoutUVs = 0; ///< which lie nearest to some that have none
    double distance = 0.0;               ///< of the middle of a triangle to the source, the largest
    std::optional<std::size_t> sourceGeometry; ///< the one of its name, if all came from that
};

} // namespace uvtool

#pragma once

#include "UVUtils/editing/CutRings.h"

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

/// Puts the corners at one vertex in fan order: the second edge of each is the first edge of the
/// next, as long as the triangles hang together, and each fan of triangles is a chain of its own.
///
///         c
///      d  |  b        (v, a, b), (v, b, c), (v, c, d): a-b, b-c, c-d
///       \ | /
///    e---(v)---a      (v, e, d) would be turned, to d-e, and come next
///
/// Chains grow greedily: the last corner that is left begins one, and sweeps over the corners from
/// the first to the last lay each at the end that it fits, the back end before the front. So where
/// more than two triangles share an edge their order in the mesh decides which are neighbours.
///
/// Of a size n log n, whatever the mesh. An object can be used again, which spares memory.
class FanOrder
{
public:
    void sort(std::span<CutCorner> ring);

private:
    /// One edge of a corner.
    struct Ray
    {
        unsigned int farEnd;
        unsigned int corner;
        auto operator<=>(const Ray&) const = default;
    };

    void begin(std::span<const CutCorner> ring);
    void growChain(std::span<CutCorner> ring);
    unsigned int findLeft(unsigned int farEnd, unsigned int corner);
    std::size_t nextLeft(std::size_t ray);

    std::vector<Ray> rays_;         ///< ascending by far end, then corner
    std::vector<std::size_t> skip_; ///< [ray] none from it to there is left; 0 for not known
    std::vector<bool> isLeft_;      ///< [corner] in no chain yet
    std::vector<CutCorner> front_;  ///< of the chain that grows, outwards
    std::vector<CutCorner> back_;
    std::vector<CutCorner> ordered_;
};

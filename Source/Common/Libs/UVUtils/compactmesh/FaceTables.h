#pragma once

#include <span>
#include <vector>

/// The triangles of a compact mesh in the order of their compact ids, and the ways to find one by
/// binary search among those at a vertex. `k` counts triangles in this order; an offset is 3k.
struct FaceTables
{
    std::vector<unsigned int> facesF;       ///< [3k] F ids in the winding of the surface
    std::vector<unsigned int> facesC;       ///< [3k] the same in compact ids
    std::vector<unsigned int> facesSortedF; ///< [3k] the F ids, ascending by compact id
    std::vector<unsigned int> faceOrder012; ///< offsets by first, second, third compact id
    std::vector<unsigned int> faceOrder02;  ///< offsets by first, third compact id
    std::vector<unsigned int> faceOrder12;  ///< offsets by second, third compact id
    std::vector<unsigned int> faceMapping;  ///< [triangle in surface order] its k

    // Where the triangles at a vertex begin in an order, by compact id; one more entry for the end.
    std::vector<unsigned int> lowestBegin; ///< those of this first vertex, in 012 and 02 alike
    std::vector<unsigned int> middleBegin; ///< those of this second vertex, in 12
};

/// Triangles with the same three compact ids stay in surface order. Corners with the same compact
/// id are fine. Linear in triangles plus compact ids, but for the sorting of the triangles at one
/// vertex.
///
/// trianglesF  [3 * triangle] F ids in surface order
/// vertFToC    [F id] compact id, below compactCount
/// former      the tables that these take the place of: where just some vertices have changed
/// since,
///             there is less to do. Its facesC is empty, or has the ids by vertFToC already
FaceTables makeFaceTables(std::span<const unsigned int> trianglesF,
                          std::span<const unsigned int> vertFToC, unsigned int compactCount,
                          FaceTables former = {});

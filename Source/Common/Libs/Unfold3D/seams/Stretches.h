#pragma once

#include "Unfold3D/seams/SeamMesh.h"

#include <cstdint>
#include <span>
#include <vector>

namespace unfold3d
{

/// A stretch of seam between two pieces along which they may be sewn: edges that follow each other
/// on the borders of both, and between them vertices around which little is missing to a full turn.
struct Stretch
{
    std::vector<int> edges; ///< ascending
    double length = 0.0;    ///< less where the surface has an edge
    int nextHalf = -1;      ///< half-edge behind its last one on the border of the first piece
};

/// How much of a full turn may be missing inside of a stretch, in radians.
struct DefectLimits
{
    double atVertex;
    double inAll; ///< summed along the stretch
};

/// Finds stretches. Keeps storage for the whole mesh; a call costs by the edges that it is given.
class StretchFinder
{
public:
    /// isSeam   [edge]
    /// pieceOf  [triangle]
    /// Both are kept by reference and may change between calls.
    StretchFinder(const SeamMesh& mesh, std::span<const char> isSeam, std::span<const int> pieceOf);

    /// The longest stretch within limits among the seam edges between two pieces.
    Stretch longest(int pieceA, int pieceB, std::span<const int> edges, const DefectLimits& limits);

private:
    void link(std::span<const int> halves, int other, double mostDefect);
    int nextInRun(int h, int other, double mostDefect) const;
    Stretch follow(int first, double mostInAll);

    const SeamMesh& mesh_;
    std::span<const char> isSeam_;
    std::span<const int> pieceOf_;
    const std::vector<double> defects_;
    std::vector<int> next_; ///< [half-edge] that follows; noRun outside of the present call
};

} // namespace unfold3d

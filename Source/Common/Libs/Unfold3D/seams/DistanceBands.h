#pragma once

#include "Unfold3D/base/OffsetArray.h"
#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/SeamDraft.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// A surface in slices by the distance from its ends: a slice is what hangs together of the
/// vertices between two distances. The slices and how they meet show the branches of a body (a Reeb
/// graph; Shinagawa and Kunii 1991): along a limb each meets two others.
struct DistanceBands
{
    std::vector<int> bandOfVertex;            ///< [vertex]
    OffsetArray<int> vertices;                ///< [band] ascending
    std::vector<std::vector<int>> neighbours; ///< [band] those that it meets, ascending
    std::vector<double> girths;    ///< [band] its area over its width: how long it is around
    std::vector<double> widths;    ///< [band] the same for all of a part
    std::vector<char> meetsBorder; ///< [band]

    int count() const { return vertices.size(); }
    /// Whether the surface goes on in two ways from a band, as along a limb.
    bool isLink(int band) const { return neighbours[static_cast<std::size_t>(band)].size() == 2; }
    /// The neighbour of a link that isn't `from`.
    int beyond(int from, int band) const
    {
        const std::vector<int>& both = neighbours[static_cast<std::size_t>(band)];
        return both.front() == from ? both.back() : both.front();
    }
};

/// ends  the vertices to measure from, some on every part: tips of limbs, borders
///
/// Splinters of a slice go to the band beside them. One search over each part. Throws Stopped.
DistanceBands findDistanceBands(const SeamMesh& mesh, const MeshParts& parts,
                                std::span<const int> ends, const RunControl& control);

} // namespace unfold3d

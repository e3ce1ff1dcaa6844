#pragma once

#include "Unfold3D/seams/SeamDraft.h"

#include <vector>

namespace unfold3d
{

/// A run of seam edges without forks, in order.
struct SeamBranch
{
    std::vector<int> edges;
    int from = -1;
    int to =
        -1; ///< vertices at its ends, a fork, a tip or the border; the same where it closes a ring
    bool dangles = false; ///< ends at `from` without meeting anything
};

/// The branches of the seams that may go: they end at forks, at tips, at the border and at
/// other seams.
std::vector<SeamBranch> findBranches(const SeamDraft& draft);

} // namespace unfold3d

#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/PatchLayout.h"
#include "Unfold3D/seams/PatchSurface.h"
#include "Unfold3D/seams/TrialUnfold.h"

#include <span>
#include <vector>

#include <tbb/enumerable_thread_specific.h>

namespace unfold3d
{

/// Lays patches flat on trial, many at the same time. The results don't depend on the number of
/// threads.
class PatchTrials
{
public:
    /// All are kept by reference; isSeam [edge] may change between calls.
    PatchTrials(const SeamMesh& mesh, std::span<const char> isSeam, const RunControl& control);

    /// What becomes of patches; their triangles ascending. Those with a layout are tried from that,
    /// by tryUnfoldFrom, others from scratch. Sets layout, area and energy; the energy is infinite
    /// where the patch would lie over itself, or can't be laid flat at all.
    ///
    /// limits  [piece]
    ///
    /// Throws Stopped.
    void run(std::span<PatchLayout> pieces, std::span<const TrialLimits> limits);

private:
    void tryPiece(PatchLayout& piece, const TrialLimits& limits);

    const SeamMesh& mesh_;
    std::span<const char> isSeam_;
    const RunControl& control_;
    tbb::enumerable_thread_specific<PatchTaker> takers_;
};

} // namespace unfold3d

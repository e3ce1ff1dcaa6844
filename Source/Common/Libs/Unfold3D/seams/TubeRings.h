#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/DistanceBands.h"
#include "Unfold3D/seams/SeamDraft.h"

namespace unfold3d
{

struct TubeRingOptions
{
    /// Of a tube, in diameters, to count as one. The middle of a ball has about 1.3.
    double leastLength = 1.6;
    /// Cut off the caps of limbs, too, not only the limbs from the body.
    bool cutCaps = true;
};

/// Lays seams around both ends of each tube-like part of a body, where they are cheapest. Ends that
/// are open already need none, and where a seam runs already the ring joins it. Such seams stay;
/// the parts of the draft are found anew.
///
/// bands  of the whole surface, seams or not
void layTubeRings(SeamDraft& draft, const DistanceBands& bands, const TubeRingOptions& options,
                  const RunControl& control);

} // namespace unfold3d

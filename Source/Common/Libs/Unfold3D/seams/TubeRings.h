#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/SeamDraft.h"

#include <span>

namespace unfold3d
{

struct TubeRingOptions
{
    /// Of a tube, in diameters, to count as one.
    double leastLength = 0.9;
    /// Cut off the caps of limbs, too, not only the limbs from the body.
    bool cutCaps = true;
};

/// Lays seams around both ends of each tube-like part of a body, where they are cheapest. Ends that
/// are open already need none. Such seams stay.
///
/// ends  the tips of limbs and what lies on borders, some on every part: tubes are looked for by
/// the
///       distance from there
void layTubeRings(SeamDraft& draft, std::span<const int> ends, const TubeRingOptions& options,
                  const RunControl& control);

} // namespace unfold3d

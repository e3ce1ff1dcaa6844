#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/SeamDraft.h"

namespace unfold3d
{

/// Cuts patches in two that would lie over themselves with much of their area when laid flat: by
/// the cheapest way from border to border between what would lie over each other. Patches with
/// less of it are left to the unfolding, which pulls them apart at the price of some distortion.
///
/// Lays each patch flat once, with a border that may cross itself, and again what it cuts. Such
/// seams stay. Throws Stopped.
void splitOverlaps(SeamDraft& draft, RunControl& control);

} // namespace unfold3d

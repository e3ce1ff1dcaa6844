#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/SeamDraft.h"

namespace unfold3d
{

/// Lays seams that may go by cheaper ways where there are any, with the same ends and the same
/// connections (the exchange of key paths in a Steiner tree): seams that grew one after the other
/// run beside each other where they could share their way.
///
/// The surface stays as open as it was. Throws Stopped.
void shortenSeams(SeamDraft& draft, const RunControl& control);

} // namespace unfold3d

#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/packing/Piece.h"
#include "Unfold3D/packing/Sheet.h"

#include <vector>

namespace unfold3d
{

/// Pulls the pieces of a layout together by their exact outlines, mostly down and mostly to the
/// left in turn, and scales the layout up by what that wins, until it wins no more. A piece goes
/// straight until something stands in its way, then along that. The result keeps the clearance of
/// the sheet; islands don't overlap when they didn't before.
///
/// maxScale  where to stop growing; the present scale for no growth
///
/// With obstacles nothing grows. A pass costs about the edges that pieces face each other with.
Layout settle(const std::vector<Piece>& pieces, const Sheet& sheet, Layout layout, double maxScale,
              const RunControl& control);

} // namespace unfold3d

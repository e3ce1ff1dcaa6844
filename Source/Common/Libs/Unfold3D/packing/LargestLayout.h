#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/packing/BestLayout.h"
#include "Unfold3D/packing/MakePieces.h"
#include "Unfold3D/packing/PackOptions.h"
#include "Unfold3D/packing/Sheet.h"

namespace unfold3d
{

/// Lays the pieces out as large as they can be had, or, where the options keep the size, at their
/// natural scale if they fit and as large as they do otherwise.
///
/// A layout in rows is there at once. Then two ways compete: by boxes, where the pieces fill
/// theirs, and by outlines, from a coarse raster to a fine one. Whatever they find is tested
/// exactly, and the best is kept. A stop, or the end of the time, ends the
/// search with the best so far.
///
/// Throws std::invalid_argument when there is no layout, and Stopped before there is one.
FoundLayout findLargestLayout(const Pieces& pieces, const Sheet& sheet, const PackOptions& options,
                              TimeLimit& time, RunControl& control);

} // namespace unfold3d

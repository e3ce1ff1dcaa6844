#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/packing/MakePieces.h"
#include "Unfold3D/packing/PackOptions.h"
#include "Unfold3D/packing/Sheet.h"

#include <string>

namespace unfold3d
{

struct FoundLayout
{
    Layout layout;
    std::string method;
};

/// Lays the pieces out as large as they can be had, or, where the options keep the size, at their
/// natural scale if they fit and as large as they do otherwise.
///
/// Several placers compete: by outlines, by boxes where the pieces fill theirs, and in rows when
/// both fail. Each layout is settled and then tested; one that doesn't pass doesn't count.
///
/// Throws std::invalid_argument when there is no layout.
FoundLayout findLargestLayout(const Pieces& pieces, const Sheet& sheet, const PackOptions& options,
                              RunControl& control);

} // namespace unfold3d

#pragma once

#include "layout/MarkedSides.h"
#include "picture/SurfaceMesh.h"

#include <filesystem>

namespace uvtool
{

/// Renders a mesh into a PNG, from two sides next to each other, with a checker that its layout
/// draws on it: squares of one size and shape tell of a layout without distortion. Islands have
/// distinct tints, seams are dark lines, sides that are marked red ones; what has no layout is
/// grey. The direction y is up.
///
/// Linear in triangles and pixels. Needs no display. A FileError of kind Write where the file can't
/// be written or has another extension.
void drawSurface(const SurfaceMesh& mesh, const std::filesystem::path& file,
                 const MarkedSides& marked = {});

/// True when drawSurface knows the extension of `file`.
bool isSurfacePictureFormat(const std::filesystem::path& file);

} // namespace uvtool

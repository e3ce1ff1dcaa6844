#pragma once

#include "layout/UVLayout.h"
#include "picture/CoverageRaster.h"
#include "picture/PictureContent.h"
#include "picture/PictureFrame.h"
#include "picture/Tints.h"

#include <span>
#include <vector>

class QPainter;

namespace uvtool
{

/// Paints the islands, largest first: each filled with its tint, its triangle edges where there is
/// room for them, its outline in a darker tint.
void paintIslands(QPainter& painter, const PictureFrame& frame, const UVLayout& layout,
                  const PictureContent& content, std::span<const Tint> tints);

/// Paints triangles that turn against their island: red, or where that is natural, darker than it.
void paintFlipped(QPainter& painter, const PictureFrame& frame, const UVLayout& layout,
                  const PictureContent& content, std::span<const Tint> tints);

/// Darkens and hatches what is covered more than once. `raster` is of the frame's own cells.
void paintOverlaps(QPainter& painter, const PictureFrame& frame, const CoverageRaster& raster);

/// The islands from the largest to the smallest.
std::vector<std::uint32_t> islandsBySize(const PictureContent& content);

} // namespace uvtool

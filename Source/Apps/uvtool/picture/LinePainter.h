#pragma once

#include "picture/PictureFrame.h"

#include <array>
#include <span>

class QPainter;

namespace uvtool
{

/// Paints lines of the UV plane that a picture points out, broad, over all that is there.
void paintLines(QPainter& painter, const PictureFrame& frame,
                std::span<const std::array<std::array<float, 2>, 2>> lines);

} // namespace uvtool

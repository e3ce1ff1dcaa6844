#pragma once

#include "layout/UVBox.h"
#include "picture/CoverageRaster.h"
#include "picture/PictureContent.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace uvtool
{

/// A rectangle of the UV plane in doubles, so that no size of a layout breaks the arithmetic.
struct UVRectangle
{
    double left = 0;
    double bottom = 0;
    double right = 1;
    double top = 1;

    double width() const { return right - left; }
    double height() const { return top - bottom; }
};

/// How a picture is divided up, in pixels, y downward.
///
///   +---------------------------+
///   | header                    |
///   |    +-----------------+    |
///   |    | map             |    |
///   |    +-----------------+    |
///   | footer                    |
///   +---------------------------+
struct PictureFrame
{
    int width = 0;
    int height = 0;
    double unit = 1; ///< pixels of a hundredth of the picture's size, for text and gaps

    UVRectangle view; ///< the part of the UV plane that the map shows
    double mapLeft = 0;
    double mapTop = 0;
    double pixelsPerUnit = 1;

    std::vector<UVRectangle> boxes; ///< the boxes asked for, or the tiles
    std::string boxesText;          ///< what the efficiency is a share of
    double boxesArea = 1;

    double x(double u) const { return mapLeft + (u - view.left) * pixelsPerUnit; }
    double y(double v) const { return mapTop + (view.top - v) * pixelsPerUnit; }

    /// One cell for each pixel of the map.
    RasterFrame raster() const;
};

/// `size` is the longer side. A map that is very long and narrow gets some air on its sides.
PictureFrame framePicture(const PictureContent& content, const std::vector<UVBox>& boxes, int size);

} // namespace uvtool

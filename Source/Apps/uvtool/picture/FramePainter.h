#pragma once

#include "picture/PictureContent.h"
#include "picture/PictureFrame.h"

#include <QString>

class QPainter;

namespace uvtool
{

/// What is known of overlaps from the raster.
struct OverlapShare
{
    double area = 0; ///< of what is covered beyond the first time, in UV units
};

/// Paints what lies below the islands: the page, the boxes and tiles, the grid.
void paintBackground(QPainter& painter, const PictureFrame& frame);

/// Paints the coordinates along the map's sides and the texts around it.
void paintTexts(QPainter& painter, const PictureFrame& frame, const PictureContent& content,
                const QString& title, const OverlapShare& overlap);

/// Paints the outlines of the boxes over the islands, so that one that reaches over is seen.
void paintBoxes(QPainter& painter, const PictureFrame& frame);

} // namespace uvtool

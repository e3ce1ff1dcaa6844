#include "picture/LinePainter.h"

#include "picture/PictureStyle.h"

#include <QLineF>
#include <QPainter>

#include <cmath>

namespace uvtool
{

void paintLines(QPainter& painter, const PictureFrame& frame,
                std::span<const std::array<std::array<float, 2>, 2>> lines)
{
    painter.setPen(QPen(pictureStyle::markedLine, 0.45 * frame.unit, Qt::SolidLine, Qt::RoundCap));
    for (const auto& [from, to] : lines) {
        const QLineF line(frame.x(from[0]), frame.y(from[1]), frame.x(to[0]), frame.y(to[1]));
        if (std::isfinite(line.length()))
            painter.drawLine(line);
    }
}

} // namespace uvtool

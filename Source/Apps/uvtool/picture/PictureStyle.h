#pragma once

#include <QColor>
#include <QFont>
#include <QPen>

#include <algorithm>

/// Colours of everything in a picture but the islands, and its font, in one place so that they fit
/// together.
namespace uvtool::pictureStyle
{

inline const QColor page(0xF1, 0xF3, 0xF6);
inline const QColor box(0xFF, 0xFF, 0xFF);
inline const QColor gridLine(0xE2, 0xE6, 0xEB);
inline const QColor tileLine(0xC3, 0xCA, 0xD3);
inline const QColor boxLine(0x8B, 0x95, 0xA3);
inline const QColor unitLine(0x33, 0x3D, 0x4B);
inline const QColor text(0x1E, 0x26, 0x31);
inline const QColor softText(0x54, 0x5F, 0x6E);
inline const QColor faintText(0x85, 0x8F, 0x9D);
inline const QColor flipped(0xD6, 0x1F, 0x26);
inline const QColor markedLine(0xE8, 0x2C, 0x0C);
inline const QColor overlap(0x10, 0x14, 0x1C, 0x22);
inline const QColor overlapHatch(0x10, 0x14, 0x1C, 0xC0);

inline const char* const fontFamily = "DejaVu Sans";

/// `height` in pixels.
inline QFont font(int height, bool bold)
{
    QFont chosen(QString::fromLatin1(fontFamily));
    chosen.setStyleHint(QFont::SansSerif);
    chosen.setPixelSize(height);
    chosen.setBold(bold);
    return chosen;
}

/// Of overlaps; `unit` as in PictureFrame.
inline QPen hatchPen(double unit)
{
    return {QBrush(overlapHatch), 0.08 * unit, Qt::SolidLine, Qt::FlatCap};
}

inline int hatchSpacing(double unit)
{
    return std::max(3, static_cast<int>(0.7 * unit));
}

} // namespace uvtool::pictureStyle

#include "picture/FramePainter.h"

#include "picture/PictureStyle.h"

#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace uvtool
{
namespace
{

QRectF pixels(const PictureFrame& frame, const UVRectangle& rectangle)
{
    return {QPointF(frame.x(rectangle.left), frame.y(rectangle.top)),
            QPointF(frame.x(rectangle.right), frame.y(rectangle.bottom))};
}

/// The least of 1, 2, 5, 10, 20 ... and their tenths that is at least as large as `least`.
double roundStep(double least)
{
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= least * (1 - 1e-9))
            return factor * power;
    }
    return 10 * power;
}

/// Multiples of `step` within a range. Kept few by the choice of the step.
std::vector<double> multiples(double step, double from, double to)
{
    std::vector<double> values;
    const double slack = 1e-6 * step;
    const double first = std::ceil((from - slack) / step);
    for (int i = 0; i < 1000; ++i) {
        const double value = (first + i) * step;
        if (!(value <= to + slack))
            break;
        values.push_back(value);
    }
    return values;
}

double gridStep(const PictureFrame& frame)
{
    return roundStep(7 * frame.unit / frame.pixelsPerUnit);
}

void paintGridLines(QPainter& painter, const PictureFrame& frame, double step)
{
    const QRectF map = pixels(frame, frame.view);
    for (const double u : multiples(step, frame.view.left, frame.view.right))
        painter.drawLine(QPointF(frame.x(u), map.top()), QPointF(frame.x(u), map.bottom()));
    for (const double v : multiples(step, frame.view.bottom, frame.view.top))
        painter.drawLine(QPointF(map.left(), frame.y(v)), QPointF(map.right(), frame.y(v)));
}

bool showsUnitSquare(const PictureFrame& frame)
{
    return frame.view.left <= 0 && frame.view.bottom <= 0 && frame.view.right >= 1 &&
           frame.view.top >= 1;
}

QString countText(std::size_t count, const char* one, const char* many)
{
    // Digits in groups of three, with a space as in most technical writing.
    QString digits = QString::number(count);
    for (auto at = digits.size() - 3; at > 0; at -= 3)
        digits.insert(at, QChar(0x2009));
    return digits + QLatin1Char(' ') + QLatin1String(count == 1 ? one : many);
}

QString percentText(double share)
{
    const double percent = 100 * share;
    const int digits = percent >= 0.1 || percent == 0 ? 1 : 3;
    return QLocale::c().toString(percent, 'f', digits) + QStringLiteral(" %");
}

/// Smaller letters can't be read.
constexpr int leastFontHeight = 7;

/// Paints texts at baselines; keeps what they have in common.
class TextPainter
{
public:
    TextPainter(QPainter& painter, const PictureFrame& frame) : painter_(painter), frame_(frame) {}

    void left(double x, double baseline, const QString& text)
    {
        painter_.drawText(QPointF(x, baseline), text);
    }
    void right(double x, double baseline, const QString& text)
    {
        left(x - width(text), baseline, text);
    }
    void middle(double x, double baseline, const QString& text)
    {
        left(x - width(text) / 2, baseline, text);
    }
    void use(double height, const QColor& color, bool bold = false)
    {
        const auto pixels = static_cast<int>(std::lround(height * frame_.unit));
        painter_.setFont(pictureStyle::font(std::max(leastFontHeight, pixels), bold));
        painter_.setPen(color);
    }
    double width(const QString& text) const
    {
        return QFontMetricsF(painter_.font()).horizontalAdvance(text);
    }
    QString shortened(const QString& text, double space) const
    {
        return QFontMetricsF(painter_.font()).elidedText(text, Qt::ElideMiddle, space);
    }

private:
    QPainter& painter_;
    const PictureFrame& frame_;
};

void paintCoordinates(TextPainter& text, const PictureFrame& frame)
{
    const double step = gridStep(frame);
    const QRectF map = pixels(frame, frame.view);
    const auto label = [](double value) {
        return QLocale::c().toString(std::abs(value) < 1e-12 ? 0.0 : value, 'g', 6);
    };
    text.use(1.3, pictureStyle::faintText);
    for (const double u : multiples(step, frame.view.left, frame.view.right))
        text.middle(frame.x(u), map.bottom() + 2.2 * frame.unit, label(u));
    for (const double v : multiples(step, frame.view.bottom, frame.view.top))
        text.right(map.left() - 0.9 * frame.unit, frame.y(v) + 0.45 * frame.unit, label(v));
}

/// Left and right end of the texts: the page less its edge.
struct TextColumn
{
    double left;
    double right;
};

void paintHeader(TextPainter& text, const PictureFrame& frame, const PictureContent& content,
                 const QString& title, const OverlapShare& overlap, TextColumn column)
{
    const double first = 5.2 * frame.unit;
    const double second = 8.2 * frame.unit;
    const double covered = std::max(0.0, content.area - overlap.area);
    text.use(3.4, pictureStyle::text, true);
    const QString share = percentText(frame.boxesArea > 0 ? covered / frame.boxesArea : 0);
    text.right(column.right, first, share);
    const double titleSpace = column.right - column.left - text.width(share) - 2 * frame.unit;

    text.use(2.4, pictureStyle::text, true);
    text.left(column.left, first, text.shortened(title, titleSpace));

    text.use(1.7, pictureStyle::softText);
    text.right(column.right, second, QString::fromStdString(frame.boxesText));
    if (content.triangleCount == 0)
        text.left(column.left, second, QStringLiteral("no UVs"));
    else
        text.left(column.left, second,
                  countText(content.islandCount(), "island", "islands") + QStringLiteral("  ·  ") +
                      countText(content.triangleCount, "triangle", "triangles"));
}

/// A patch that looks like a mark, if there is one, and what the mark means.
struct LegendEntry
{
    void (*paintPatch)(QPainter& painter, const QRectF& square, double unit);
    QString meaning;
};

void paintFlippedPatch(QPainter& painter, const QRectF& square, double)
{
    painter.fillRect(square, pictureStyle::flipped);
}

/// Their tints differ; that they are the darker ones shows beside a lighter grey.
void paintFoldedPatch(QPainter& painter, const QRectF& square, double)
{
    painter.fillRect(square, pictureStyle::tileLine);
    painter.fillRect(QRectF(square.center(), square.bottomRight()), pictureStyle::boxLine);
    painter.fillRect(QRectF(square.topLeft(), square.center()), pictureStyle::boxLine);
}

void paintOverlapPatch(QPainter& painter, const QRectF& square, double unit)
{
    painter.fillRect(square, pictureStyle::box);
    painter.fillRect(square, pictureStyle::overlap);
    painter.setPen(pictureStyle::hatchPen(unit));
    const double step = pictureStyle::hatchSpacing(unit);
    for (double reach = step / 2; reach < 2 * square.width(); reach += step) {
        const double inside = std::min(reach, square.width());
        const double outside = reach - inside;
        painter.drawLine(square.topLeft() + QPointF(outside, inside),
                         square.topLeft() + QPointF(inside, outside));
    }
}

std::vector<LegendEntry> legend(const PictureContent& content, const OverlapShare& overlap)
{
    std::vector<LegendEntry> entries;
    if (content.flipsAreNatural && !content.flipped.empty())
        entries.push_back(
            {paintFoldedPatch, countText(content.flipped.size(), "triangle", "triangles") +
                                   QStringLiteral(" turned over, darker")});
    else if (!content.flipped.empty())
        entries.push_back({paintFlippedPatch, countText(content.flipped.size(), "flipped triangle",
                                                        "flipped triangles")});
    if (overlap.area > 0)
        entries.push_back({paintOverlapPatch, percentText(overlap.area / content.area) +
                                                  QStringLiteral(" of the area overlaps")});
    if (content.nonFinite > 0)
        entries.push_back({nullptr, countText(content.nonFinite, "triangle", "triangles") +
                                        QStringLiteral(" without finite UVs left out")});
    return entries;
}

void paintLegend(QPainter& painter, TextPainter& text, const PictureFrame& frame,
                 const std::vector<LegendEntry>& entries, TextColumn column)
{
    const double baseline = frame.height - 2.2 * frame.unit;
    const double patch = 1.7 * frame.unit;
    double x = column.left;
    for (const LegendEntry& entry : entries) {
        if (entry.paintPatch != nullptr) {
            const QRectF square(x, baseline - patch + 0.2 * frame.unit, patch, patch);
            entry.paintPatch(painter, square, frame.unit);
            x += patch + 0.8 * frame.unit;
        }
        text.use(1.7, pictureStyle::softText);
        text.left(x, baseline, entry.meaning);
        x += text.width(entry.meaning) + 3 * frame.unit;
    }
}

} // namespace

void paintBackground(QPainter& painter, const PictureFrame& frame)
{
    painter.fillRect(QRectF(0, 0, frame.width, frame.height), pictureStyle::page);
    painter.setPen(Qt::NoPen);
    if (showsUnitSquare(frame))
        painter.fillRect(pixels(frame, UVRectangle{}), pictureStyle::box);
    for (const UVRectangle& box : frame.boxes)
        painter.fillRect(pixels(frame, box), pictureStyle::box);

    const double step = gridStep(frame);
    const double hair = 0.06 * frame.unit;
    painter.setPen(QPen(pictureStyle::gridLine, hair));
    paintGridLines(painter, frame, step);
    // Where whole numbers are sides of tiles, they stand out.
    if (step < 1 && frame.pixelsPerUnit > 3 * frame.unit) {
        painter.setPen(QPen(pictureStyle::tileLine, 1.5 * hair));
        paintGridLines(painter, frame, 1);
    }
}

void paintBoxes(QPainter& painter, const PictureFrame& frame)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(
        QPen(pictureStyle::boxLine, 0.1 * frame.unit, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    for (const UVRectangle& box : frame.boxes)
        painter.drawRect(pixels(frame, box));
    if (showsUnitSquare(frame)) {
        painter.setPen(QPen(pictureStyle::unitLine, 0.14 * frame.unit, Qt::SolidLine, Qt::SquareCap,
                            Qt::MiterJoin));
        painter.drawRect(pixels(frame, UVRectangle{}));
    }
}

void paintTexts(QPainter& painter, const PictureFrame& frame, const PictureContent& content,
                const QString& title, const OverlapShare& overlap)
{
    TextPainter text(painter, frame);
    const QRectF map = pixels(frame, frame.view);
    const double margin = std::min(map.left(), 6 * frame.unit);
    const TextColumn column{margin, frame.width - margin};
    paintCoordinates(text, frame);
    paintHeader(text, frame, content, title, overlap, column);
    paintLegend(painter, text, frame, legend(content, overlap), column);
}

} // namespace uvtool

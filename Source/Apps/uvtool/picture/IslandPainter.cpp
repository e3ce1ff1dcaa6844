#include "picture/IslandPainter.h"

#include "layout/OpenEdges.h"
#include "picture/IslandOutlines.h"
#include "picture/PictureStyle.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace uvtool
{
namespace
{

/// Points of an outline closer than this many pixels to the last one drawn are passed over.
constexpr double leastStep = 0.3;

/// Triangle edges this many pixels apart begin to show, and are fully drawn, respectively.
constexpr double firstSpacing = 4.0;
constexpr double fullSpacing = 12.0;

/// A path of many triangles one over another takes long to fill, one for each makes a large SVG.
constexpr std::size_t flipsPerPath = 64;

QColor color(const Tint& tint, double alpha = 1)
{
    const auto [red, green, blue] = toRgb(tint);
    QColor c(red, green, blue);
    c.setAlphaF(alpha);
    return c;
}

Tint darker(const Tint& tint, double lightness)
{
    return {lightness, tint.chroma, tint.hue};
}

QPointF pixel(const PictureFrame& frame, const std::array<float, 2>& uv)
{
    return {frame.x(static_cast<double>(uv[0])), frame.y(static_cast<double>(uv[1]))};
}

bool isNear(const QPointF& a, const QPointF& b)
{
    return std::abs(a.x() - b.x()) < leastStep && std::abs(a.y() - b.y()) < leastStep;
}

void addLoop(QPainterPath& path, const PictureFrame& frame, const UVLayout& layout,
             std::span<const std::uint32_t> loop)
{
    QPointF last = pixel(frame, layout.uvs[loop.front()]);
    path.moveTo(last);
    for (const std::uint32_t uv : loop.subspan(1)) {
        const QPointF point = pixel(frame, layout.uvs[uv]);
        if (isNear(point, last))
            continue;
        path.lineTo(point);
        last = point;
    }
    path.closeSubpath();
}

QPainterPath outlinePath(const PictureFrame& frame, const UVLayout& layout,
                         const IslandOutlines& outlines, std::size_t island)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (std::uint32_t loop = outlines.islandOffsets[island];
         loop < outlines.islandOffsets[island + 1]; ++loop)
        addLoop(path, frame, layout, outlines.loop(loop));
    return path;
}

void addTriangle(QPainterPath& path, const PictureFrame& frame, const UVLayout& layout,
                 std::size_t triangle)
{
    path.moveTo(pixel(frame, layout.point(triangle, 0)));
    path.lineTo(pixel(frame, layout.point(triangle, 1)));
    path.lineTo(pixel(frame, layout.point(triangle, 2)));
    path.closeSubpath();
}

/// The triangles sorted by island; those of island i are [offsets[i], offsets[i + 1]).
struct TrianglesByIsland
{
    std::vector<std::uint32_t> offsets;
    std::vector<std::uint32_t> triangles;

    explicit TrianglesByIsland(const PictureContent& content)
        : offsets(content.islandCount() + 1, 0), triangles(content.triangleCount)
    {
        std::partial_sum(content.trianglesOfIsland.begin(), content.trianglesOfIsland.end(),
                         offsets.begin() + 1);
        std::vector<std::uint32_t> next(offsets.begin(), offsets.end() - 1);
        for (std::uint32_t t = 0; t < content.islandOfTriangle.size(); ++t) {
            if (content.islandOfTriangle[t] >= 0)
                triangles[next[static_cast<std::size_t>(content.islandOfTriangle[t])]++] = t;
        }
    }
};

/// How far apart the edges of an island's triangles are in the mean, in pixels.
double edgeSpacing(const PictureFrame& frame, const PictureContent& content, std::size_t island)
{
    return frame.pixelsPerUnit *
           std::sqrt(content.areaOfIsland[island] / content.trianglesOfIsland[island]);
}

double edgeOpacity(double spacing)
{
    return std::clamp((spacing - firstSpacing) / (fullSpacing - firstSpacing), 0.0, 1.0);
}

/// Paints one island after another with the same pens. Where an island is folded, the windings of
/// its outline may cancel out and leave a part empty; flipped triangles cover all of that.
class IslandPainter
{
public:
    IslandPainter(QPainter& painter, const PictureFrame& frame, const UVLayout& layout,
                  const PictureContent& content)
        : painter_(painter), frame_(frame), layout_(layout), content_(content), triangles_(content),
          outlineWidth_(chooseOutlineWidth())
    {
        const std::vector<TriangleEdge> open = openEdges(layout, content.islandOfTriangle);
        outlines_ = chainOutlines(layout, content.islandOfTriangle, open, content.islandCount());
    }

    void paint(std::size_t island, const Tint& tint)
    {
        const QPainterPath outline = outlinePath(frame_, layout_, outlines_, island);
        const double opacity = edgeOpacity(edgeSpacing(frame_, content_, island));
        const QPen pen(color(darker(tint, 0.42)), outlineWidth_, Qt::SolidLine, Qt::RoundCap,
                       Qt::RoundJoin);
        painter_.setBrush(color(tint));
        if (opacity <= 0) {
            painter_.setPen(pen);
            painter_.drawPath(outline);
            return;
        }
        painter_.setPen(Qt::NoPen);
        painter_.drawPath(outline);
        painter_.setBrush(Qt::NoBrush);
        painter_.setPen(QPen(color(darker(tint, 0.50), 0.55 * opacity), 0.05 * frame_.unit));
        painter_.drawPath(innerEdges(island));
        painter_.setPen(pen);
        painter_.drawPath(outline);
    }

private:
    std::span<const std::uint32_t> trianglesOf(std::size_t island) const
    {
        return std::span(triangles_.triangles)
            .subspan(triangles_.offsets[island],
                     triangles_.offsets[island + 1] - triangles_.offsets[island]);
    }

    /// Each inner edge is walked both ways; the way up draws it. An outline covers its own edges.
    QPainterPath innerEdges(std::size_t island) const
    {
        QPainterPath lines;
        for (const std::uint32_t triangle : trianglesOf(island)) {
            const std::size_t first = 3 * std::size_t{triangle};
            for (std::size_t k = 0; k < 3; ++k) {
                const std::uint32_t from = layout_.corners[first + k];
                const std::uint32_t to = layout_.corners[first + (k + 1) % 3];
                if (from >= to)
                    continue;
                lines.moveTo(pixel(frame_, layout_.uvs[from]));
                lines.lineTo(pixel(frame_, layout_.uvs[to]));
            }
        }
        return lines;
    }

    /// Outlines get thinner when islands are so small that they would fill them.
    double chooseOutlineWidth() const
    {
        if (content_.islandCount() == 0)
            return 1;
        std::vector<double> areas = content_.areaOfIsland;
        const auto middle = areas.begin() + static_cast<std::ptrdiff_t>(areas.size() / 2);
        std::nth_element(areas.begin(), middle, areas.end());
        const double side = frame_.pixelsPerUnit * std::sqrt(*middle);
        return std::clamp(side / 20, 0.035 * frame_.unit, 0.13 * frame_.unit);
    }

    QPainter& painter_;
    const PictureFrame& frame_;
    const UVLayout& layout_;
    const PictureContent& content_;
    const TrianglesByIsland triangles_;
    const double outlineWidth_;
    IslandOutlines outlines_;
};

} // namespace

std::vector<std::uint32_t> islandsBySize(const PictureContent& content)
{
    std::vector<std::uint32_t> order(content.islandCount());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
        return content.areaOfIsland[a] > content.areaOfIsland[b];
    });
    return order;
}

void paintIslands(QPainter& painter, const PictureFrame& frame, const UVLayout& layout,
                  const PictureContent& content, std::span<const Tint> tints)
{
    IslandPainter islandPainter(painter, frame, layout, content);
    for (const std::uint32_t island : islandsBySize(content))
        islandPainter.paint(island, tints[island]);
}

void paintFlipped(QPainter& painter, const PictureFrame& frame, const UVLayout& layout,
                  const PictureContent& content, std::span<const Tint> tints)
{
    const auto islandOf = [&content](std::uint32_t triangle) {
        return static_cast<std::size_t>(content.islandOfTriangle[triangle]);
    };
    std::vector<std::uint32_t> flipped = content.flipped;
    if (content.flipsAreNatural)
        std::stable_sort(flipped.begin(), flipped.end(), [&](std::uint32_t s, std::uint32_t t) {
            return content.areaOfIsland[islandOf(s)] > content.areaOfIsland[islandOf(t)];
        });
    for (std::size_t first = 0; first < flipped.size();) {
        const std::size_t island = islandOf(flipped[first]);
        const QColor fill =
            content.flipsAreNatural ? color(darker(tints[island], 0.6)) : pictureStyle::flipped;
        QPainterPath path;
        path.setFillRule(Qt::WindingFill);
        const std::size_t end = std::min(first + flipsPerPath, flipped.size());
        for (; first < end && (!content.flipsAreNatural || islandOf(flipped[first]) == island);
             ++first)
            addTriangle(path, frame, layout, flipped[first]);
        painter.setPen(QPen(fill, 0.06 * frame.unit)); // keeps a sliver visible
        painter.setBrush(fill);
        painter.drawPath(path);
    }
}

void paintOverlaps(QPainter& painter, const PictureFrame& frame, const CoverageRaster& raster)
{
    QPainterPath cells;
    for (const CellBlock& block : raster.overlaps())
        cells.addRect(frame.mapLeft + block.column, frame.mapTop + block.row,
                      block.columnEnd - block.column, block.rowEnd - block.row);
    if (cells.isEmpty())
        return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(pictureStyle::overlap);
    painter.setRenderHint(QPainter::Antialiasing, false); // or blocks would show their seams
    painter.drawPath(cells);
    painter.setRenderHint(QPainter::Antialiasing);

    QPainterPath strokes;
    for (const CellStroke& stroke : raster.overlapHatch(pictureStyle::hatchSpacing(frame.unit))) {
        const QPointF start(frame.mapLeft + stroke.column, frame.mapTop + stroke.row + 1);
        strokes.moveTo(start);
        strokes.lineTo(start + QPointF(stroke.length, -stroke.length));
    }
    painter.setPen(pictureStyle::hatchPen(frame.unit));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(strokes);
}

} // namespace uvtool

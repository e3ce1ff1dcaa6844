#include "Unfold3D/packing/Sheet.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace unfold3d
{

namespace
{

constexpr int maxTilesAlong = 1000;
/// How far a vertex may move when the layout is rounded to floats, in steps of the float grid:
/// where a plain rounding would turn a triangle over, it goes to one of the next places.
constexpr double stepsOfRounding = 8.0;

/// The difference between neighbouring floats at the outer edge of the sheet.
double floatStep(const PackOptions& options)
{
    const Box2& box = options.box;
    const double farthest =
        std::max({std::abs(box.low.x), std::abs(box.low.x + options.tilesU * box.width()),
                  std::abs(box.low.y), std::abs(box.low.y + options.tilesV * box.height())});
    return farthest * static_cast<double>(std::numeric_limits<float>::epsilon());
}

void checkOptions(const PackOptions& options)
{
    const Box2& box = options.box;
    if (!(box.width() > 0.0 && box.height() > 0.0 && std::isfinite(box.width()) &&
          std::isfinite(box.height())))
        throw std::invalid_argument("The box to pack into has no area.");
    if (options.tilesU < 1 || options.tilesV < 1 || options.tilesU > maxTilesAlong ||
        options.tilesV > maxTilesAlong)
        throw std::invalid_argument("There must be 1 to " + std::to_string(maxTilesAlong) +
                                    " tiles along each axis.");
    if (options.spacing < 0.0 || options.margin < 0.0)
        throw std::invalid_argument("Spacing and margin can't be negative.");
}

} // namespace

Sheet makeSheet(const PackOptions& options)
{
    checkOptions(options);
    const double step = floatStep(options);
    Sheet sheet;
    sheet.corner = options.box.low;
    sheet.width = options.box.width();
    sheet.height = options.box.height();
    sheet.tilesU = options.tilesU;
    sheet.tilesV = options.tilesV;
    sheet.clearance = options.spacing + 2.0 * stepsOfRounding * step;
    sheet.gap = sheet.clearance + 0.5 * step;
    sheet.margin = options.margin + stepsOfRounding * step;
    if (sheet.tileCount() > 1)
        sheet.margin = std::max(sheet.margin, 0.5 * sheet.gap);
    if (!(sheet.innerWidth() > 0.0 && sheet.innerHeight() > 0.0))
        throw std::invalid_argument(
            "The margin leaves no room in the box. Make the margin smaller or the box larger.");
    return sheet;
}

int tileAt(const Sheet& sheet, Vec2 point)
{
    const auto along = [](double distance, double size, int count) {
        return static_cast<int>(std::clamp(std::floor(distance / size), 0.0, count - 1.0));
    };
    return along(point.x - sheet.corner.x, sheet.width, sheet.tilesU) +
           along(point.y - sheet.corner.y, sheet.height, sheet.tilesV) * sheet.tilesU;
}

void addObstacle(Sheet& sheet, const std::vector<OutlineEdge>& outline)
{
    Box2 box;
    for (const OutlineEdge& edge : outline) {
        box.add(edge.from);
        box.add(edge.to);
    }
    if (box.isEmpty())
        return;
    box = box.inflatedBy(sheet.gap);
    const int first = tileAt(sheet, box.low);
    const int last = tileAt(sheet, box.high);
    for (int row = first / sheet.tilesU; row <= last / sheet.tilesU; ++row)
        for (int column = first % sheet.tilesU; column <= last % sheet.tilesU; ++column) {
            const int tile = row * sheet.tilesU + column;
            const Vec2 corner = sheet.tileCorner(tile);
            if (!box.meets({corner, corner + Vec2{sheet.width, sheet.height}}))
                continue;
            std::vector<OutlineEdge> seenFromTile = outline;
            for (OutlineEdge& edge : seenFromTile) {
                edge.from -= corner;
                edge.to -= corner;
            }
            sheet.obstacles.push_back({tile, OutlineTree(std::move(seenFromTile))});
        }
}

} // namespace unfold3d

#include "picture/PictureFrame.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace uvtool
{
namespace
{

/// More tiles than this are no tiles any more but a layout in units of its own.
constexpr std::size_t mostTiles = 64;

/// An island that reaches this far into a tile only leans over its side and doesn't use it.
constexpr double tileSlack = 0.1;

/// The map shows the unit square too unless it would be smaller than this share of the view.
constexpr double leastUnitShare = 0.02;

UVRectangle rectangle(const UVBox& box)
{
    return {static_cast<double>(box.lo[0]), static_cast<double>(box.lo[1]),
            static_cast<double>(box.hi[0]), static_cast<double>(box.hi[1])};
}

UVRectangle unite(const UVRectangle& a, const UVRectangle& b)
{
    return {std::min(a.left, b.left), std::min(a.bottom, b.bottom), std::max(a.right, b.right),
            std::max(a.top, b.top)};
}

UVRectangle tileRectangle(double column, double row)
{
    return {column, row, column + 1, row + 1};
}

/// First and last tile along one axis. The middle of the range always lies in one of them.
std::pair<double, double> tileRange(float lo, float hi)
{
    const double low = lo;
    const double high = hi;
    const double middle = std::floor((low + high) / 2);
    return {std::min(middle, std::floor(low + tileSlack)),
            std::max(middle, std::ceil(high - tileSlack) - 1)};
}

/// The tiles that islands use, row by row from below; none when there are too many.
std::vector<UVRectangle> usedTiles(const PictureContent& content)
{
    std::vector<std::pair<double, double>> tiles; // row, column
    for (const UVBox& box : content.boundsOfIsland) {
        const auto [left, right] = tileRange(box.lo[0], box.hi[0]);
        const auto [bottom, top] = tileRange(box.lo[1], box.hi[1]);
        if ((right - left + 1) * (top - bottom + 1) > mostTiles)
            return {};
        for (double row = bottom; row <= top; ++row)
            for (double column = left; column <= right; ++column)
                tiles.emplace_back(row, column);
    }
    std::sort(tiles.begin(), tiles.end());
    tiles.erase(std::unique(tiles.begin(), tiles.end()), tiles.end());
    if (tiles.size() > mostTiles)
        return {};
    std::vector<UVRectangle> rectangles;
    rectangles.reserve(tiles.size());
    for (const auto& [row, column] : tiles)
        rectangles.push_back(tileRectangle(column, row));
    return rectangles;
}

std::string textFor(const std::vector<UVRectangle>& tiles)
{
    if (tiles.size() > 1)
        return "of " + std::to_string(tiles.size()) + " tiles";
    if (tiles[0].left == 0 && tiles[0].bottom == 0)
        return "of the unit square";
    return "of its tile";
}

void chooseBoxes(const PictureContent& content, const std::vector<UVBox>& asked,
                 PictureFrame& frame)
{
    std::transform(asked.begin(), asked.end(), std::back_inserter(frame.boxes), rectangle);
    if (!asked.empty()) {
        frame.boxesText = asked.size() == 1 ? "of the box" : "of the boxes";
    } else if (content.islandCount() == 0) {
        frame.boxes.push_back(UVRectangle{});
        frame.boxesText = "of the unit square";
    } else {
        frame.boxes = usedTiles(content);
        if (frame.boxes.empty()) {
            frame.boxes.push_back(rectangle(content.bounds));
            frame.boxesText = "of its bounding box";
        } else {
            frame.boxesText = textFor(frame.boxes);
        }
    }
    if (asked.size() == 1 && asked[0].lo == std::array{0.0F, 0.0F} &&
        asked[0].hi == std::array{1.0F, 1.0F})
        frame.boxesText = "of the unit square";
    frame.boxesArea = 0;
    for (const UVRectangle& box : frame.boxes)
        frame.boxesArea += box.width() * box.height();
}

UVRectangle chooseView(const PictureContent& content, const std::vector<UVRectangle>& boxes)
{
    UVRectangle view = boxes[0];
    for (const UVRectangle& box : boxes)
        view = unite(view, box);
    if (!content.bounds.isEmpty())
        view = unite(view, rectangle(content.bounds));
    const UVRectangle withUnit = unite(view, UVRectangle{});
    if (1 / std::max(withUnit.width(), withUnit.height()) >= leastUnitShare)
        view = withUnit;
    // A layout without a width, far away, still needs some room.
    const double least = 1e-6 * std::max({1e-30, view.width(), view.height(), std::abs(view.left),
                                          std::abs(view.bottom)});
    view.right = std::max(view.right, view.left + least);
    view.top = std::max(view.top, view.bottom + least);
    return view;
}

} // namespace

RasterFrame PictureFrame::raster() const
{
    return {view.left, view.top, pixelsPerUnit,
            static_cast<std::int32_t>(std::ceil(view.width() * pixelsPerUnit)),
            static_cast<std::int32_t>(std::ceil(view.height() * pixelsPerUnit))};
}

PictureFrame framePicture(const PictureContent& content, const std::vector<UVBox>& boxes, int size)
{
    PictureFrame frame;
    frame.unit = size / 100.0;
    chooseBoxes(content, boxes, frame);
    frame.view = chooseView(content, frame.boxes);

    const double side = 6 * frame.unit;
    const double header = 11 * frame.unit;
    const double footer = 8 * frame.unit;
    frame.pixelsPerUnit = std::min((size - 2 * side) / frame.view.width(),
                                   (size - header - footer) / frame.view.height());
    const double mapWidth = frame.view.width() * frame.pixelsPerUnit;
    const double mapHeight = frame.view.height() * frame.pixelsPerUnit;
    frame.width = static_cast<int>(std::ceil(std::max(mapWidth + 2 * side, 0.6 * size)));
    frame.height = static_cast<int>(std::ceil(mapHeight + header + footer));
    frame.mapLeft = (frame.width - mapWidth) / 2;
    frame.mapTop = header;
    return frame;
}

} // namespace uvtool

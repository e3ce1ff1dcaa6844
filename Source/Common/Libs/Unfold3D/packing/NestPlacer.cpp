#include "Unfold3D/packing/NestPlacer.h"

#include "Unfold3D/packing/EvenTiles.h"
#include "Unfold3D/packing/LayOrder.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <map>
#include <tbb/parallel_for.h>

namespace unfold3d
{

namespace
{

bool isSame(const ShapeRaster& a, const ShapeRaster& b)
{
    return a.width == b.width && a.height == b.height && a.cellCount == b.cellCount &&
           std::equal(a.runs.begin(), a.runs.end(), b.runs.begin(), b.runs.end(),
                      [](const CellRun& x, const CellRun& y) {
                          return x.row == y.row && x.begin == y.begin && x.end == y.end;
                      });
}

int wholeCells(double size, double cell)
{
    return std::max(0, static_cast<int>(std::floor(size / cell + 1e-9)));
}

} // namespace

// A piece is rastered with half the gap around it. So the raster reaches beyond the margin by half
// the gap on each side.
NestPlacer::NestPlacer(const std::vector<Piece>& pieces, const Sheet& sheet, int cells,
                       const RunControl& control)
    : pieces_(pieces), sheet_(sheet), control_(control),
      cell_((std::max(sheet.innerWidth(), sheet.innerHeight()) + sheet.gap) / cells),
      columns_(wholeCells(sheet.innerWidth() + sheet.gap, cell_)),
      rows_(wholeCells(sheet.innerHeight() + sheet.gap, cell_))
{
    blockObstacles();
}

void NestPlacer::blockObstacles()
{
    const double reach = sheet_.margin - 0.5 * sheet_.gap;
    for (const Obstacle& obstacle : sheet_.obstacles) {
        control_.checkpoint();
        obstacles_.push_back(rasterInFrame(obstacle.outline.edges(), {-reach, -reach},
                                           0.5 * sheet_.gap, cell_, columns_, rows_));
    }
}

std::vector<std::vector<double>> NestPlacer::goodOrders() const
{
    return unfold3d::goodOrders(pieces_);
}

bool NestPlacer::setScale(double scale)
{
    scale_ = scale;
    if (columns_ == 0 || rows_ == 0)
        return false;
    rasterPieces();
    makeBlankSheet();
    double cells = 0.0;
    for (const Poses& poses : poses_) {
        if (poses.empty())
            return false;
        cells += static_cast<double>(fewestCells(poses));
    }
    return cells <= static_cast<double>(sheet_.tileCount()) * columns_ * rows_;
}

long long NestPlacer::fewestCells(const Poses& poses)
{
    long long fewest = std::numeric_limits<long long>::max();
    for (const Pose& pose : poses)
        fewest = std::min(fewest, pose.raster.cellCount);
    return fewest;
}

NestPlacer::Poses NestPlacer::posesOf(const Piece& piece) const
{
    Poses poses;
    for (std::size_t turn = 0; turn < piece.turns.size(); ++turn) {
        const Box2& box = piece.boxes[turn];
        if (scale_ * box.width() > sheet_.innerWidth() ||
            scale_ * box.height() > sheet_.innerHeight())
            continue;
        ShapeRaster raster =
            rasterShape(piece.outline.edges(), scale_ * piece.turns[turn], 0.5 * sheet_.gap, cell_);
        if (raster.width > columns_ || raster.height > rows_ ||
            std::any_of(poses.begin(), poses.end(),
                        [&](const Pose& other) { return isSame(other.raster, raster); }))
            continue;
        const ShapeProbe probe(raster);
        poses.push_back({static_cast<int>(turn), std::move(raster), probe});
    }
    return poses;
}

void NestPlacer::rasterPieces()
{
    poses_.assign(pieces_.size(), {});
    tbb::parallel_for(std::size_t{0}, pieces_.size(), [&](std::size_t i) {
        control_.checkpoint();
        poses_[i] = posesOf(pieces_[i]);
    });
}

void NestPlacer::makeBlankSheet()
{
    unsigned longest = 1;
    for (const Poses& poses : poses_)
        for (const Pose& pose : poses)
            for (const CellRun& run : pose.raster.runs)
                longest = std::max(longest, static_cast<unsigned>(run.length()));
    // Sheets for lengths between the same powers of two are alike.
    const int needed = static_cast<int>(std::bit_floor(longest));
    if (needed == longestRun_)
        return;
    longestRun_ = needed;
    sheets_.setBlank({columns_, rows_, longestRun_});
}

SheetPool::Borrowed NestPlacer::sheetOfTile(int tile) const
{
    SheetPool::Borrowed sheet = sheets_.borrow();
    for (std::size_t i = 0; i < obstacles_.size(); ++i)
        if (sheet_.obstacles[i].tile == tile)
            sheet->occupy(obstacles_[i], {0, 0});
    return sheet;
}

std::optional<NestPlacer::Spot> NestPlacer::findSpot(const BitSheet& sheet,
                                                     const Poses& poses) const
{
    std::optional<Spot> best;
    int topLimit = rows_;
    for (std::size_t i = 0; i < poses.size(); ++i) {
        const std::optional<Cell> cell = sheet.lowestFit(poses[i].probe, topLimit);
        if (cell)
            best = Spot{&poses[i], *cell};
        if (!best || i + 1 == poses.size())
            continue;
        // The next turn has to bring the middle of the box lower than the best, or it isn't worth
        // to be looked for: 2 y + height < that of the best.
        const int height = poses[i + 1].raster.height;
        const int lowest = 2 * best->cell.y + best->pose->raster.height - height;
        topLimit = std::min(rows_, (lowest + 1) / 2 - 1 + height);
    }
    return best;
}

Attempt NestPlacer::layOut(std::span<const double> weights) const
{
    std::map<int, SheetPool::Borrowed> sheets;
    const auto sheetOf = [&](int tile) -> BitSheet& {
        SheetPool::Borrowed& sheet = sheets[tile];
        if (!sheet)
            sheet = sheetOfTile(tile);
        return *sheet;
    };

    const double reach = sheet_.margin - 0.5 * sheet_.gap;
    Layout layout{scale_, std::vector<Placement>(pieces_.size())};
    double placedArea = 0.0;
    EvenTiles tiles(sheet_, pieces_.size());
    for (const int p : heaviestFirst(weights)) {
        control_.checkpoint();
        const auto i = static_cast<std::size_t>(p);
        const long long fewest = fewestCells(poses_[i]);
        const auto put = [&](int tile) {
            BitSheet& sheet = sheetOf(tile);
            if (sheet.freeCells() < fewest)
                return false;
            const std::optional<Spot> spot = findSpot(sheet, poses_[i]);
            if (!spot)
                return false;
            const Pose& pose = *spot->pose;
            sheet.occupy(pose.raster, spot->cell);
            layout.placements[i] = {
                pose.turn, tile,
                Vec2{reach + cell_ * spot->cell.x, reach + cell_ * spot->cell.y} -
                    pose.raster.corner};
            return true;
        };
        if (!tiles.lay(pieces_[i], put))
            return {std::nullopt, placedArea};
        placedArea += pieces_[i].area;
    }
    return {std::move(layout), placedArea};
}

} // namespace unfold3d

#include "Unfold3D/packing/NestPlacer.h"

#include "Unfold3D/packing/LayOrder.h"

#include <algorithm>
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

long long fewestCells(const std::vector<ShapeRaster>& poses)
{
    long long fewest = std::numeric_limits<long long>::max();
    for (const ShapeRaster& pose : poses)
        if (!pose.runs.empty())
            fewest = std::min(fewest, pose.cellCount);
    return fewest;
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
    for (const Obstacle& obstacle : sheet_.obstacles)
        obstacles_.push_back(rasterInFrame(obstacle.outline.edges(), {-reach, -reach},
                                           0.5 * sheet_.gap, cell_, columns_, rows_));
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
    const auto fits = [&](const Box2& box) {
        return scale * box.width() <= sheet_.innerWidth() &&
               scale * box.height() <= sheet_.innerHeight();
    };
    for (const Piece& piece : pieces_)
        if (std::none_of(piece.boxes.begin(), piece.boxes.end(), fits))
            return false;
    rasterPieces();
    double cells = 0.0;
    for (const Poses& poses : poses_)
        cells += static_cast<double>(fewestCells(poses));
    return cells <= static_cast<double>(sheet_.tileCount()) * columns_ * rows_;
}

void NestPlacer::rasterPieces()
{
    poses_.assign(pieces_.size(), {});
    tbb::parallel_for(std::size_t{0}, pieces_.size(), [&](std::size_t i) {
        control_.checkpoint();
        const Piece& piece = pieces_[i];
        Poses& poses = poses_[i];
        poses.reserve(piece.turns.size());
        for (std::size_t t = 0; t < piece.turns.size(); ++t) {
            const Box2& box = piece.boxes[t];
            ShapeRaster raster;
            if (scale_ * box.width() <= sheet_.innerWidth() &&
                scale_ * box.height() <= sheet_.innerHeight())
                raster = rasterShape(piece.outline.edges(), scale_ * piece.turns[t],
                                     0.5 * sheet_.gap, cell_);
            if (std::any_of(poses.begin(), poses.end(),
                            [&](const ShapeRaster& other) { return isSame(other, raster); }))
                raster.runs.clear();
            poses.push_back(std::move(raster));
        }
    });
    longestRun_ = 1;
    for (const Poses& poses : poses_)
        for (const ShapeRaster& pose : poses)
            for (const CellRun& run : pose.runs)
                longestRun_ = std::max(longestRun_, run.length());
}

std::optional<NestPlacer::Spot> NestPlacer::findSpot(const BitSheet& sheet,
                                                     const Poses& poses) const
{
    std::optional<Spot> best;
    int topLimit = rows_;
    for (std::size_t t = 0; t < poses.size(); ++t) {
        const std::optional<Cell> cell = sheet.lowestFit(poses[t], topLimit);
        if (!cell)
            continue;
        best = Spot{static_cast<int>(t), *cell};
        // Another turn has to do better.
        topLimit = cell->y + poses[t].height - 1;
    }
    return best;
}

std::optional<Layout> NestPlacer::layOut(std::span<const double> weights) const
{
    std::map<int, BitSheet> sheets;
    const auto sheetOf = [&](int tile) -> BitSheet& {
        const auto [at, isNew] = sheets.try_emplace(tile, columns_, rows_, longestRun_);
        if (isNew)
            for (std::size_t i = 0; i < obstacles_.size(); ++i)
                if (sheet_.obstacles[i].tile == tile)
                    at->second.occupy(obstacles_[i], {0, 0});
        return at->second;
    };

    const double reach = sheet_.margin - 0.5 * sheet_.gap;
    Layout layout;
    layout.scale = scale_;
    layout.placements.resize(pieces_.size());
    for (const int p : heaviestFirst(weights)) {
        control_.checkpoint();
        const auto i = static_cast<std::size_t>(p);
        const bool anyTile = pieces_[i].tile == Piece::anyTile;
        const int first = anyTile ? 0 : pieces_[i].tile;
        const int last = anyTile ? sheet_.tileCount() - 1 : pieces_[i].tile;
        const long long fewest = fewestCells(poses_[i]);
        bool isPlaced = false;
        for (int tile = first; tile <= last && !isPlaced; ++tile) {
            BitSheet& sheet = sheetOf(tile);
            if (sheet.freeCells() < fewest)
                continue;
            const std::optional<Spot> spot = findSpot(sheet, poses_[i]);
            if (!spot)
                continue;
            isPlaced = true;
            const ShapeRaster& pose = poses_[i][static_cast<std::size_t>(spot->turn)];
            sheet.occupy(pose, spot->cell);
            layout.placements[i] = {
                spot->turn, tile,
                Vec2{reach + cell_ * spot->cell.x, reach + cell_ * spot->cell.y} - pose.corner};
        }
        if (!isPlaced)
            return std::nullopt;
    }
    return layout;
}

} // namespace unfold3d

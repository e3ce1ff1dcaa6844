#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/packing/BitSheet.h"
#include "Unfold3D/packing/Placer.h"
#include "Unfold3D/packing/Sheet.h"
#include "Unfold3D/packing/SheetPool.h"

#include <vector>

namespace unfold3d
{

/// Lays pieces out by their outlines, on a raster: each goes to the lowest place of all its turns,
/// measured at the middle of its box, so small ones end up in the holes and bays of the larger ones
/// that were laid before.
///
/// The raster is conservative. The result keeps the gap exactly, whatever the size of the cells.
class NestPlacer : public Placer
{
public:
    /// cells  along the longer side of a tile
    NestPlacer(const std::vector<Piece>& pieces, const Sheet& sheet, int cells,
               const RunControl& control);

    std::vector<std::vector<double>> goodOrders() const override;
    bool setScale(double scale) override;
    Attempt layOut(std::span<const double> weights) const override;

private:
    /// A piece in one of its turns.
    struct Pose
    {
        int turn;
        ShapeRaster raster;
        ShapeProbe probe;
    };
    /// The turns in which a piece fits the sheet and that differ on the raster.
    using Poses = std::vector<Pose>;

    struct Spot
    {
        const Pose* pose;
        Cell cell;
    };

    static long long fewestCells(const Poses& poses);
    Poses posesOf(const Piece& piece) const;
    void rasterPieces();
    void blockObstacles();
    void makeBlankSheet();
    SheetPool::Borrowed sheetOfTile(int tile) const;
    std::optional<Spot> findSpot(const BitSheet& sheet, const Poses& poses) const;

    const std::vector<Piece>& pieces_;
    const Sheet& sheet_;
    const RunControl& control_;
    double cell_;
    int columns_;
    int rows_;
    long long cellsOfObstacles_ = 0;
    std::vector<ShapeRaster> obstacles_; ///< [obstacle of the sheet]

    double scale_ = 0.0;
    std::vector<Poses> poses_; ///< [piece]
    int longestRun_ = 0;       ///< of a blank sheet
    mutable SheetPool sheets_;
};

} // namespace unfold3d

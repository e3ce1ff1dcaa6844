#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/packing/BoxRoom.h"
#include "Unfold3D/packing/Placer.h"
#include "Unfold3D/packing/Sheet.h"

#include <vector>

namespace unfold3d
{

/// Lays pieces out by their boxes, with exact sizes: the best way for pieces that fill their boxes.
///
/// Keeps the list of all largest free rectangles (Jylänki 2010, "A Thousand Ways to Pack the Bin").
/// With few pieces each step takes the best of all pieces, turns and free rectangles, with many the
/// best place for the next piece in order.
class BoxPlacer : public Placer
{
public:
    BoxPlacer(const std::vector<Piece>& pieces, const Sheet& sheet, const RunControl& control);

    std::vector<std::vector<double>> goodOrders() const override;
    bool setScale(double scale) override;
    Attempt layOut(std::span<const double> weights) const override;

private:
    std::size_t layInOrder(std::span<const double> weights, BoxRoom& room, Attempt& attempt) const;
    std::size_t layBestFirst(std::span<const double> weights, BoxRoom& room,
                             Attempt& attempt) const;
    void place(std::size_t piece, const BoxSpot& spot, BoxRoom& room, Attempt& attempt) const;

    const std::vector<Piece>& pieces_;
    const Sheet& sheet_;
    const RunControl& control_;
    std::vector<std::vector<int>> turns_; ///< [piece] those that it is tried in
    double scale_ = 0.0;
    std::vector<std::vector<BoxPose>> poses_; ///< [piece] at that scale
};

} // namespace unfold3d

#pragma once

#include "Unfold3D/base/RunControl.h"
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
    std::optional<Layout> layOut(std::span<const double> weights) const override;

private:
    struct Spot;
    class Room;

    /// A turn in which a piece is tried.
    struct Pose
    {
        int turn;
        Box2 box; ///< at scale 1
    };

    Spot bestSpot(std::size_t piece, double weight, const Room& room) const;
    void place(std::size_t piece, const Spot& spot, Room& room, Layout& layout) const;
    bool layInOrder(std::span<const double> weights, Room& room, Layout& layout) const;
    bool layBestFirst(std::span<const double> weights, Room& room, Layout& layout) const;

    const std::vector<Piece>& pieces_;
    const Sheet& sheet_;
    const RunControl& control_;
    std::vector<std::vector<Pose>> poses_; ///< [piece]
    double scale_ = 0.0;
};

} // namespace unfold3d

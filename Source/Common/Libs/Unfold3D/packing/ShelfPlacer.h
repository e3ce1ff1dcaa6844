#pragma once

#include "Unfold3D/packing/Placer.h"
#include "Unfold3D/packing/Sheet.h"

namespace unfold3d
{

/// Lays the boxes of pieces side by side in rows, the tallest first. Wasteful, but it can't go
/// wrong and takes one sort however many pieces there are. Knows no obstacles: with any it finds no
/// layout.
class ShelfPlacer : public Placer
{
public:
    ShelfPlacer(const std::vector<Piece>& pieces, const Sheet& sheet)
        : pieces_(pieces), sheet_(sheet)
    {}

    std::vector<std::vector<double>> goodOrders() const override;
    bool setScale(double scale) override;
    Attempt layOut(std::span<const double> weights) const override;

private:
    const std::vector<Piece>& pieces_;
    const Sheet& sheet_;
    double scale_ = 0.0;
};

} // namespace unfold3d

#pragma once

#include "Unfold3D/packing/Piece.h"

#include <optional>
#include <span>
#include <vector>

namespace unfold3d
{

/// A way of laying pieces out at a given scale. Asked many times by the search for the largest one.
class Placer
{
public:
    Placer() = default;
    Placer(const Placer&) = delete;
    Placer& operator=(const Placer&) = delete;
    virtual ~Placer() = default;

    /// Orders that are worth trying first, each as weights [piece]. At least one.
    virtual std::vector<std::vector<double>> goodOrders() const = 0;

    /// Prepares for a scale. False when there surely is no layout of this kind at it.
    virtual bool setScale(double scale) = 0;

    /// A layout at that scale, pieces of higher weight taken first, or none when this order leads
    /// to none. Of equal weights the earlier piece is taken first. May run on several threads at
    /// once.
    virtual std::optional<Layout> layOut(std::span<const double> weights) const = 0;
};

} // namespace unfold3d

#pragma once

#include "Unfold3D/packing/Piece.h"

#include <optional>
#include <span>
#include <vector>

namespace unfold3d
{

/// What became of an order in which pieces were laid.
struct Attempt
{
    std::optional<Layout> layout; ///< when all found a place
    double placedArea = 0.0;      ///< of the pieces that did, at scale 1
};

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

    /// Lays the pieces out at that scale, those of higher weight first, until one finds no place.
    /// Of equal weights the earlier piece is taken first. May run on several threads at once.
    virtual Attempt layOut(std::span<const double> weights) const = 0;
};

} // namespace unfold3d

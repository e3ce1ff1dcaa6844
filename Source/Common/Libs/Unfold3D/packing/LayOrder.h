#pragma once

#include "Unfold3D/packing/Piece.h"

#include <cstdint>
#include <span>
#include <vector>

namespace unfold3d
{

/// The order in which pieces are laid: highest weight first, of equal ones the earlier piece.
std::vector<int> heaviestFirst(std::span<const double> weights);

/// Orders that are worth trying first, the best for many pieces in front, each as the weights
/// [piece] that make it: by the area of the box, by the area of the piece, by the longer side of
/// the box and by its height as it stands.
std::vector<std::vector<double>> goodOrders(const std::vector<Piece>& pieces);

/// The same order disturbed: each weight times or divided by about `strength`, by chance. Equal
/// seeds give equal results, everywhere.
std::vector<double> mutated(std::span<const double> weights, double strength, std::uint64_t seed);

} // namespace unfold3d

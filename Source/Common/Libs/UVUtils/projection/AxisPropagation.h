#pragma once

#include <array>
#include <span>
#include <vector>

/// Axes for the triangles that could take several: they follow their neighbours.
///
/// All arrays are by triangle number; candidates and assigned hold masks of axes (TriplanarAxes.h).
/// assigned is 0 for a triangle without an axis yet, else the bit of its axis; candidates has the
/// axes that a triangle may take.
namespace triplanar
{

constexpr int noTriangle = -1;

/// The triangle across each edge, or noTriangle; edge k goes from corner k to the next one.
using Neighbors = std::array<int, 3>;

/// Triangles that have an axis and a neighbour without one, ascending, by axis.
using Front = std::array<std::vector<int>, 6>;

/// Finds the neighbours of the triangles, and where those with an axis border on those without.
///
/// places     [3 * triangle + corner] the same number for corners at the same place, from 0
/// neighbors  receives one entry for each triangle. An edge that three or more triangles use gives
///            no neighbour, nor does one along which a triangle runs twice. Neighbours that both
///            have an axis may be left out, since nothing passes between them.
/// front      receives the border
///
/// False, and nothing received, for places that are no whole triangles, or not as many as
/// `assigned`. Linear in triangles plus highest place, but for the sorting of the edges at one
/// place.
bool buildNeighborsList(std::span<const unsigned int> places,
                        std::span<const unsigned char> assigned, std::vector<Neighbors>& neighbors,
                        Front& front);

/// Gives each triangle that may take several axes one of them, or that of a neighbour.
///
/// From the triangles that had an axis at first, waves spread over those that could take the same:
/// all together and evenly, and what one has taken no other gets. Of what they don't reach,
/// triangles with two candidates, then those with more, start waves of their lowest axis while they
/// have a neighbour without an axis, and else take the axis of their last neighbour, whatever it
/// is. Just those without candidates are without an axis at the end.
///
/// Linear in triangles plus highest place, but for the sorting of the edges at one place.
void propagateAxes(std::span<const unsigned int> places, std::span<const unsigned char> candidates,
                   std::span<unsigned char> assigned);

} // namespace triplanar

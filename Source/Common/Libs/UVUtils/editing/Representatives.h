#pragma once

#include "UVUtils/editing/BorderVertices.h"
#include "UVUtils/editing/SewVertexLess.h"

#include <vector>

/// [place] The place of the vertex that stands for all that are equal to this one: the one that
/// comes first.
///
/// Where the order is none, it is the one that a std::set finds which takes the vertices in one
/// after the other, in ascending order of their ids. n log n comparisons.
std::vector<unsigned int> findRepresentatives(const BorderVertices& vertices,
                                              const SewVertexLess& isLess);

#pragma once

#include "UVUtils/model/Edge.h"

#include <span>
#include <vector>

/// Equal edges of a list under one number, so that what belongs to an edge lies in an array rather
/// than in a hash table.
struct EdgeNumbers
{
    std::vector<unsigned int> numberOf; ///< [edge of the list] from 0, ascending with the edge
    unsigned int count = 0;             ///< how many different edges there are
};

/// Linear in edges plus highest id, but for the sorting of the edges at one vertex.
EdgeNumbers numberEdges(std::span<const Edge> edges);

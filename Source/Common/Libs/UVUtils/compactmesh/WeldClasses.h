#pragma once

#include "UVUtils/compactmesh/ShellArrays.h"

#include <span>
#include <vector>

/// Vertices whose weld keys are equal within the tolerance, as far as that can be said at all.
struct WeldClasses
{
    std::vector<unsigned int> classOf; ///< [vertex]
    unsigned int count = 0;
    /// [class] WeldKeyLess is no strict weak order around it; such a class holds exactly equal keys
    /// only. Empty when there is no such class.
    std::vector<char> isUnsettled;
};

/// order  the vertices by position (orderByPosition)
WeldClasses findWeldClasses(const ShellArrays& shell, std::span<const unsigned int> order);

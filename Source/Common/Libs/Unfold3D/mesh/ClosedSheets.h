#pragma once

#include "Unfold3D/mesh/IslandSurface.h"

#include <vector>

namespace unfold3d
{

/// What leaveOutClosedSheets() took away.
struct ClosedSheets
{
    std::vector<char> isHinge; ///< [vertex of what is left] whether it is one of theirs as well
    std::vector<int> vertices; ///< theirs alone, by their numbers in the imported mesh, ascending
};

/// Leaves out of an island what no seam opens: triangles that hang together by edges and have no
/// border. They can only touch the rest of the island in single vertices. Nothing is left of an
/// island that consists of them. Linear.
ClosedSheets leaveOutClosedSheets(IslandSurface& surface);

} // namespace unfold3d

#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/RunControl.h"

namespace unfold3d
{

/// How well a patch can be laid flat.
struct TrialUnfold
{
    double energy = 0.0;   ///< symmetric Dirichlet, mean over the area; 4 is undistorted, infinite
                           ///< where there is no layout at all
    bool overlaps = false; ///< its border would cross itself

    bool isWithin(double limit) const { return !overlaps && energy <= limit; }
};

/// Lays a patch flat as Unfold would, but with nothing to keep its border apart. Costs a few sparse
/// factorisations; only a pass over it where it is flat. Throws Stopped.
TrialUnfold tryUnfold(const IslandMesh& patch, const RunControl& control);

/// The same with a border that is kept from crossing itself, as Unfold does; dear where it would.
TrialUnfold tryUnfoldApart(const IslandMesh& patch, const RunControl& control);

} // namespace unfold3d

#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/base/Vec.h"
#include "Unfold3D/seams/PatchLayout.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// How well a patch can be laid flat.
struct TrialUnfold
{
    double energy = 0.0;   ///< symmetric Dirichlet, mean over the area; 4 is undistorted, infinite
                           ///< where there is no layout at all
    bool overlaps = false; ///< the border crosses itself
    std::vector<Vec2> uv;  ///< [vertex] in the scale of the patch; empty where there is none

    bool isWithin(double limit) const { return !overlaps && energy <= limit; }
};

/// What a trial is to reach.
struct TrialLimits
{
    double enough; ///< energy from which on down nothing is made better
    double most;   ///< energy above which a layout is of no use, so that it may overlap; below it,
                   ///< one whose border would cross is left as it came, if it came without that;
                   ///< infinite: whatever can be had
};

/// Lays a patch flat as Unfold does, with a border that is kept from crossing itself where that
/// leaves a layout of use. Costs a few sparse factorisations, more where the border would cross;
/// only a pass over the patch where it is flat. A large patch that comes out far above the limit
/// when it is made coarse isn't looked at further. Every vertex has to be the middle of one fan of
/// triangles. Throws Stopped.
TrialUnfold tryUnfold(const IslandMesh& patch, const TrialLimits& limits,
                      const RunControl& control);

/// The same with a border that may cross itself.
TrialUnfold tryUnfoldFreely(const IslandMesh& patch, const RunControl& control);

/// The same from places for the corners of each triangle ([triangle]) that nearly agree: as they
/// are where the energy is enough then, else minimised. Corners may miss each other where
/// the patch was put together; where that flips triangles for good, there is no layout. A border
/// that crosses itself already isn't pulled apart.
TrialUnfold tryUnfoldFrom(const IslandMesh& patch, std::span<const CornerUVs> corners,
                          const TrialLimits& limits, const RunControl& control);

} // namespace unfold3d

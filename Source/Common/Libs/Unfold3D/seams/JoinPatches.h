#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/PatchLayout.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <functional>
#include <span>
#include <vector>

namespace unfold3d
{

/// Which neighbours may join.
struct JoinRules
{
    /// [edge] the seams that may go
    std::span<const char> maySew;
    /// Whether two pieces are worth a trial; all are when empty.
    std::function<bool(const PatchLayout&, const PatchLayout&)> areWanted;
    double mostEnergy = 4.08;   ///< of the union
    double mostNewStrain = 0.2; ///< energy that the union has more than its parts, by the area of
                                ///< the smaller part
    double leastShare = 0.05;   ///< of the smaller perimeter that the common border makes up
};

/// Sews pieces to neighbours along seams, as long as the union can be laid flat without overlap and
/// with hardly more distortion. Those that share most of their border go first.
///
/// Two pieces are sewn along one stretch of their common border, in whose inside the surface has
/// little curvature; where they touch elsewhere they stay cut. So a union opens like its parts.
///
/// pieces  each open and without handles, laid flat; those that are joined to others become empty
/// isSeam  [edge]  loses the stretches that are sewn
///
/// Rounds of trials side by side; about as many rounds as the logarithm of the number of pieces
/// plus the number of neighbours of one. Throws Stopped.
void joinPieces(const SeamMesh& mesh, const JoinRules& rules, std::vector<PatchLayout>& pieces,
                std::vector<char>& isSeam, RunControl& control);

} // namespace unfold3d

#include "Unfold3D/seams/BakingSeams.h"

#include "Unfold3D/seams/SharpEdges.h"
#include "Unfold3D/seams/UnfoldablePatches.h"

namespace unfold3d
{

std::vector<char> bakingSeams(const SeamMesh& mesh, const BakingOptions& options,
                              RunControl& control)
{
    std::vector<char> isSeam = sharpEdges(mesh, options.angle);
    makeUnfoldable(mesh, isSeam, control);
    return isSeam;
}

} // namespace unfold3d

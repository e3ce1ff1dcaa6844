#include "Unfold3D/seams/BakingSeams.h"

#include "Unfold3D/seams/SharpEdges.h"
#include "Unfold3D/seams/SmallPatches.h"
#include "Unfold3D/seams/UnfoldablePatches.h"

namespace unfold3d
{

std::vector<char> bakingSeams(const SeamMesh& mesh, const BakingOptions& options,
                              RunControl& control)
{
    std::vector<char> isSeam = sharpEdges(mesh, options.angle);
    std::vector<PatchLayout> patches = makeUnfoldable(mesh, isSeam, control);
    joinSmallPatches(mesh, {.minTriangles = options.minPatchPolygons}, patches, isSeam, control);
    return isSeam;
}

} // namespace unfold3d

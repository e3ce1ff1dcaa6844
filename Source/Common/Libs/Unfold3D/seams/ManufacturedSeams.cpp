#include "Unfold3D/seams/ManufacturedSeams.h"

#include "Unfold3D/seams/SharpEdges.h"
#include "Unfold3D/seams/SmallPatches.h"
#include "Unfold3D/seams/UnfoldablePatches.h"

#include <algorithm>
#include <numeric>

namespace unfold3d
{

std::vector<char> manufacturedSeams(const SeamMesh& mesh, const ManufacturedOptions& options,
                                    RunControl& control)
{
    std::vector<char> isSeam = sharpEdges(mesh, options.angle);
    std::vector<PatchLayout> patches = makeUnfoldable(mesh, isSeam, control);
    const double area = std::accumulate(mesh.areas.begin(), mesh.areas.end(), 0.0);
    const double ratio = std::clamp(options.minPatchRatio, 0.0, 1.0);
    joinSmallPatches(mesh, {.minArea = ratio * area}, patches, isSeam, control);
    return isSeam;
}

} // namespace unfold3d

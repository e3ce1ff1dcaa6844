#include "Unfold3D/seams/ManufacturedSeams.h"

#include "Unfold3D/seams/SharpEdges.h"
#include "Unfold3D/seams/UnfoldablePatches.h"

namespace unfold3d
{

std::vector<char> manufacturedSeams(const SeamMesh& mesh, const ManufacturedOptions& options,
                                    RunControl& control)
{
    std::vector<char> isSeam = sharpEdges(mesh, options.angle);
    makeUnfoldable(mesh, isSeam, control);
    return isSeam;
}

} // namespace unfold3d

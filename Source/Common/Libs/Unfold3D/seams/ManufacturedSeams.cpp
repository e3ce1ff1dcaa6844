#include "Unfold3D/seams/ManufacturedSeams.h"

#include "Unfold3D/seams/OpenPatches.h"
#include "Unfold3D/seams/SeamCosts.h"
#include "Unfold3D/seams/SharpEdges.h"

namespace unfold3d
{

std::vector<char> manufacturedSeams(const SeamMesh& mesh, const ManufacturedOptions& options,
                                    RunControl& control)
{
    std::vector<char> isSeam = sharpEdges(mesh, options.angle);
    openPatches(mesh, shapeCosts(mesh), isSeam, control);
    return isSeam;
}

} // namespace unfold3d

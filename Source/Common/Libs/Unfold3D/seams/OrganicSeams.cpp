#include "Unfold3D/seams/OrganicSeams.h"

#include "Unfold3D/seams/OpenPatches.h"
#include "Unfold3D/seams/SeamCosts.h"

namespace unfold3d
{

std::vector<char> organicSeams(const SeamMesh& mesh, const OrganicOptions&, RunControl& control)
{
    std::vector<char> isSeam(static_cast<std::size_t>(mesh.edgeCount()), 0);
    openPatches(mesh, shapeCosts(mesh), isSeam, control);
    return isSeam;
}

} // namespace unfold3d

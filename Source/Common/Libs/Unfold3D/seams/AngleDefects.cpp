#include "Unfold3D/seams/AngleDefects.h"

#include <numbers>

namespace unfold3d
{

std::vector<double> angleDefects(const SeamMesh& mesh)
{
    std::vector<double> defects(mesh.positions.size(), 2.0 * std::numbers::pi);
    for (int h = 0; h < 3 * mesh.triangleCount(); ++h)
        defects[static_cast<std::size_t>(mesh.originOf(h))] -= cornerAngle(mesh, h);
    for (std::size_t v = 0; v < defects.size(); ++v)
        if (mesh.isOnBorder[v])
            defects[v] = 0.0;
    return defects;
}

} // namespace unfold3d

#include "Unfold3D/parameterisation/Relax.h"

#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/parameterisation/MovablePart.h"

namespace unfold3d
{

RelaxResult relax(const IslandMesh& mesh, std::vector<Vec2> uv, const FlattenOptions& options,
                  const RunControl& control, const std::function<void(double)>& progress)
{
    const MovablePart part(mesh, options.isFixed);
    RelaxResult result;
    if (!isFlipFree(part.corners, uv)) {
        result.uv = std::move(uv);
        return result;
    }
    FlattenOptions own = options;
    own.mayStartCrossing = true;
    FlattenResult flat = flatten(mesh, std::move(uv), own, control, progress);
    result.isSound = isFlipFree(part.corners, flat.uv) &&
                     (!options.preventBorderCrossings || flat.report.borderCrossings == 0);
    result.uv = std::move(flat.uv);
    result.report = std::move(flat.report);
    return result;
}

FlattenResult straightenOnly(const IslandMesh& mesh, const std::vector<Vec2>& uv,
                             const FlattenOptions& options, const RunControl& control)
{
    // The layout itself is what should not be distorted.
    IslandMesh present;
    for (const Vec2 p : uv)
        present.positions.push_back({p.x, p.y, 0.0});
    present.triangles = mesh.triangles;
    FlattenOptions own = options;
    own.iterations = 0;
    own.keepScale = true;
    own.mayStartCrossing = true;
    return flatten(present, uv, own, control, {});
}

} // namespace unfold3d

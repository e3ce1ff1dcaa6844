#include "Unfold3D/parameterisation/Relax.h"

#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/parameterisation/MovablePart.h"
#include "Unfold3D/parameterisation/Untangle.h"

namespace unfold3d
{

namespace
{

constexpr double progressOfUntangling = 0.5;

} // namespace

RelaxResult relax(const IslandMesh& mesh, std::vector<Vec2> uv, const FlattenOptions& options,
                  const RunControl& control, const std::function<void(double)>& progress)
{
    const MovablePart part(mesh, options.isFixed);
    RelaxResult result;
    double begin = 0.0;
    if (!isFlipFree(part.corners, uv)) {
        begin = progressOfUntangling;
        UntangleResult untangled = untangle(part, std::move(uv), control, [&](double fraction) {
            progress(progressOfUntangling * fraction);
        });
        uv = std::move(untangled.uv);
        result.report.method = "untangling, ";
        result.report.steps = untangled.steps;
        if (!untangled.isDone) {
            result.uv = std::move(uv);
            return result;
        }
    }
    FlattenOptions own = options;
    own.mayStartCrossing = true;
    FlattenResult flat = flatten(mesh, std::move(uv), own, control, [&](double fraction) {
        progress(begin + (1.0 - begin) * fraction);
    });
    flat.report.method = result.report.method + flat.report.method;
    flat.report.steps += result.report.steps;
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

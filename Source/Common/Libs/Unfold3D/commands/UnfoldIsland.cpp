#include "Unfold3D/commands/UnfoldIsland.h"

#include "Unfold3D/commands/IslandFlattener.h"
#include "Unfold3D/commands/PinnedLines.h"
#include "Unfold3D/layout/Placement.h"
#include "Unfold3D/mesh/IslandSurface.h"

namespace unfold3d
{

IslandLayout unfoldIsland(const Session& session, int island, const FlattenOptions& options,
                          const RunControl& control, const std::function<void(double)>& progress)
{
    IslandLayout result;
    IslandSurface surface = takeIsland(session.mesh, session.islands, island, control);
    result.obstacle = surface.obstacle;
    if (result.obstacle != Obstacle::None)
        return result;
    control.checkpoint();

    result.hadLayout = hasLayout(session, surface.vertices);
    const std::vector<Vec2> old =
        result.hadLayout ? layoutOf(session, surface.vertices) : std::vector<Vec2>();
    FlattenOptions own = options;
    own.straight = pinnedLines(session, surface);
    IslandFlattener flattener(surface.mesh, old, own, control, progress);
    result.obstacle = flattener.obstacle();
    if (result.obstacle != Obstacle::None)
        return result;

    FlattenAttempt best = flattener.run();
    result.method = best.methods();
    result.warnings = std::move(best.report.warnings);
    result.uv = std::move(best.uv);
    for (Vec2& p : result.uv)
        p = surface.size * p;
    if (result.hadLayout)
        moveMiddleTo(boxAround(old).centre(), surface.mesh.triangleCount(), result.uv);
    result.vertices = std::move(surface.vertices);
    return result;
}

} // namespace unfold3d

#include "Unfold3D/commands/Commands.h"
#include "Unfold3D/commands/IslandChoice.h"
#include "Unfold3D/commands/IslandReport.h"
#include "Unfold3D/commands/IslandWork.h"
#include "Unfold3D/commands/UnfoldIsland.h"
#include "Unfold3D/layout/Placement.h"

namespace unfold3d
{

namespace
{

FlattenOptions readOptions(const Params& params)
{
    FlattenOptions options;
    options.iterations = params.integer("#Iterations int 1", 1);
    options.preventBorderCrossings = params.flag("#BorderIntersections bool", true);
    options.roomSpace = params.number("#RoomSpace double 000.1", 0.1);
    if (options.roomSpace < 0.0)
        throw CommandError("The room space must not be negative.");
    params.flag("#TriangleFlips bool", true); // no triangle is ever flipped
    return options;
}

/// Lays the islands where they belong: around where they were, or into rows when they were nowhere.
void place(const Session& session, std::vector<IslandLayout>& results)
{
    std::vector<std::vector<Vec2>*> withoutPlace;
    for (IslandLayout& result : results) {
        if (result.obstacle != Obstacle::None)
            continue;
        if (!result.hadLayout) {
            withoutPlace.push_back(&result.uv);
            continue;
        }
        moveMiddleTo(boxAround(layoutOf(session, result.vertices)).centre(),
                     static_cast<int>(result.triangles.size()), result.uv);
    }
    layInRows(withoutPlace);
}

} // namespace

void runUnfold(Session& session, const Params& params, Answer& answer, RunControl& control)
{
    const FlattenOptions options = readOptions(params);
    const std::vector<int> chosen = islandsOf(session, chosenVertices(session, params, "unfolded"));
    std::vector<IslandLayout> results = workOnIslands(
        session, chosen,
        [&](int island, const std::function<void(double)>& progress) {
            return unfoldIsland(session, island, options, control, progress);
        },
        control);
    reportIslands(session, chosen, results, {"unfold", "unfolded"}, answer);
    place(session, results);
    control.checkpoint();
    for (std::size_t i = 0; i < results.size(); ++i)
        if (results[i].obstacle == Obstacle::None)
            putIntoSession(session, chosen[i], results[i]);
}

} // namespace unfold3d

#include "Unfold3D/commands/Commands.h"
#include "Unfold3D/commands/IslandChoice.h"
#include "Unfold3D/commands/IslandReport.h"
#include "Unfold3D/commands/IslandWork.h"
#include "Unfold3D/commands/UnfoldIsland.h"

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
    layNewInRows(results);
    control.checkpoint();
    for (std::size_t i = 0; i < results.size(); ++i)
        putIntoSession(session, chosen[i], results[i]);
}

} // namespace unfold3d

#include "Unfold3D/commands/Commands.h"
#include "Unfold3D/commands/IslandChoice.h"
#include "Unfold3D/commands/IslandReport.h"
#include "Unfold3D/commands/IslandWork.h"
#include "Unfold3D/commands/RelaxIsland.h"

#include <algorithm>

namespace unfold3d
{

namespace
{

RelaxOptions readOptions(const Params& params)
{
    RelaxOptions options;
    options.iterations = params.integer("#Iterations int 2", 2);
    options.preventBorderCrossings = params.flag("#BorderIntersection bool", true);
    options.roomSpace = params.number("#RoomSpace double 0.001", 0.001);
    options.preventFlips = params.flag("#TriangleFlips bool", true);
    options.power = std::clamp(params.number("#Mix double 1.0", 1.0), 0.0, 1.0);
    options.lengths = std::clamp(params.number("#AngleDistanceMix double 1.0", 1.0), 0.0, 1.0);
    if (options.roomSpace < 0.0)
        throw CommandError("The room space must not be negative.");
    return options;
}

} // namespace

void runOptimize(Session& session, const Params& params, Answer& answer, RunControl& control)
{
    const RelaxOptions options = readOptions(params);
    const std::vector<char> isChosen = chosenVertices(session, params, "relaxed");
    const std::vector<int> islands = islandsOf(session, isChosen);
    std::vector<IslandLayout> results = workOnIslands(
        session, islands,
        [&](int island, const std::function<void(double)>& progress) {
            return relaxIsland(session, island, isChosen, options, control, progress);
        },
        control);
    reportIslands(session, islands, results, {"relax", "relaxed"}, answer);
    layNewInRows(results);
    control.checkpoint();
    for (std::size_t i = 0; i < results.size(); ++i)
        putIntoSession(session, islands[i], results[i]);
}

} // namespace unfold3d

#include "commands/Commands.h"

#include "commands/SceneWork.h"
#include "commands/SeamWork.h"
#include "scene/SeamPlaces.h"

#include <algorithm>

namespace uvtool
{
namespace
{

void planEdges(const Task& task, const SceneGeometry& scene, const SceneEdges& edges,
               SeamPlan& plan)
{
    const NamedEdges named =
        findNamedEdges(edges, readEdgeFile(*task.options.seams.edges, scene.vertexCount));
    plan.operation.kind = SeamOperation::SewEdges;
    plan.operation.edges = vertexPairsOf(scene, edges, named.borders);
    plan.report.edgesNotInMesh = named.notInMesh;
    plan.report.edgesPassedOver = named.joined.size();
    for (const std::size_t edge : named.borders)
        plan.sides.push_back(edges.sides(edge).front());
}

void planIslands(const Task& task, const SceneGeometry& scene, const SceneIslands& found,
                 const SceneEdges& edges, SeamPlan& plan)
{
    const SewOptions& options = task.options.sew;
    SeamOperation& operation = plan.operation;
    operation.seeds = options.seeds;
    operation.otherIslandOnly = options.otherIslandOnly;
    operation.matchUVs = options.matchUVs;
    std::vector<char> isChosen(found.islands.size(), 1);
    if (options.seeds.empty()) {
        operation.kind = SeamOperation::SewAllIslands;
    } else {
        operation.kind = SeamOperation::SewSelectedIslands;
        throwUnlessInScene(options.seeds, scene, "--selected-by-seeds");
        isChosen = islandsOf(scene, found, options.seeds);
    }
    plan.sides = touchingBorders(scene, edges, found, isChosen, options.otherIslandOnly);
}

SeamPlan planSew(const Task& task, const SceneGeometry& scene, const SceneIslands& found,
                 const SceneEdges& edges)
{
    SeamPlan plan;
    if (task.options.seams.edges)
        planEdges(task, scene, edges, plan);
    else
        planIslands(task, scene, found, edges, plan);
    plan.report.usedEdges = plan.sides.size();
    return plan;
}

void throwUnlessMapped(const Task& task)
{
    const std::size_t slot = task.options.common.slot;
    if (std::any_of(task.chosen.begin(), task.chosen.end(), [&](std::size_t number) {
            return task.document.geometries[number].uvs[slot].exists();
        }))
        return;
    throw CommandError(Failed, task.report.input + ": nothing to sew, there are no UVs in slot " +
                                   std::to_string(slot));
}

std::string whyNothing(const Options& options)
{
    if (options.seams.edges)
        return "--edges names no border";
    const std::string borders =
        options.sew.otherIslandOnly ? "borders of different islands" : "borders";
    return "no " + borders + (options.sew.seeds.empty() ? "" : ", of those selected,") +
           " lie on one another";
}

void sew(Task& task)
{
    const bool isByEdges = task.options.seams.edges.has_value();
    task.read();
    task.probeOutputs();
    if (isByEdges || !task.options.sew.seeds.empty())
        throwUnlessOneScene(task, isByEdges ? "--edges" : "--selected-by-seeds");
    throwUnlessMapped(task);
    SeamWork work(task);
    task.stage("sew", 0.5, [&] {
        work.carryOut([&](const SceneGeometry& scene, const SceneIslands& found,
                          const SceneEdges& edges) { return planSew(task, scene, found, edges); });
    });
    if (work.isEmpty())
        throw CommandError(Failed,
                           task.report.input + ": nothing to sew, " + whyNothing(task.options));
    task.stage("look", 0.3, [&] { work.lookAgain(); });
    work.writeFiles(0.15);
}

} // namespace

ExitStatus runSew(const Options& options, Console& console)
{
    Task task("sew", options, console);
    task.run([&] { sew(task); }, [&] { tellResult(task); });
    return Done;
}

} // namespace uvtool

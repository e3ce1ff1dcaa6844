#include "commands/Commands.h"

#include "commands/SceneWork.h"
#include "commands/SeamWork.h"
#include "scene/SeamPlaces.h"
#include "scene/SharpEdges.h"

namespace uvtool
{
namespace
{

/// The edges to cut, with what there is to tell about those that were named.
std::vector<std::size_t> chooseEdges(const Task& task, const SceneGeometry& scene,
                                     const SceneEdges& edges, SeamReport& report)
{
    std::vector<std::size_t> chosen;
    if (task.options.cut.angle) {
        chosen = sharpEdges(task.document, scene, edges, *task.options.cut.angle);
    } else {
        NamedEdges named =
            findNamedEdges(edges, readEdgeFile(*task.options.seams.edges, scene.vertexCount));
        report.edgesNotInMesh = named.notInMesh;
        report.edgesPassedOver = named.borders.size();
        chosen = std::move(named.joined);
    }
    report.usedEdges = chosen.size();
    return chosen;
}

SeamPlan planCut(const Task& task, const SceneGeometry& scene, const SceneEdges& edges)
{
    SeamPlan plan;
    const std::vector<std::size_t> chosen = chooseEdges(task, scene, edges, plan.report);
    plan.operation.kind = SeamOperation::CutEdges;
    plan.operation.edges = vertexPairsOf(scene, edges, chosen);
    for (const std::size_t edge : chosen)
        plan.sides.push_back(edges.sides(edge).front());
    return plan;
}

std::string whyNothing(const CutOptions& options)
{
    return options.angle ? "no edge is sharper than --angle"
                         : "--edges names none that joins triangles";
}

void cut(Task& task)
{
    task.read();
    task.probeOutputs();
    if (!task.options.cut.angle)
        throwUnlessOneScene(task, "--edges");
    SeamWork work(task);
    task.stage("cut", 0.5, [&] {
        work.giveStartUVs();
        work.carryOut([&](const SceneGeometry& scene, const SceneIslands&,
                          const SceneEdges& edges) { return planCut(task, scene, edges); });
    });
    if (work.isEmpty())
        throw CommandError(Failed,
                           task.report.input + ": nothing to cut, " + whyNothing(task.options.cut));
    task.stage("look", 0.3, [&] { work.lookAgain(); });
    work.writeFiles(0.15);
}

} // namespace

ExitStatus runCut(const Options& options, Console& console)
{
    Task task("cut", options, console);
    task.run([&] { cut(task); }, [&] { tellResult(task); });
    return Done;
}

} // namespace uvtool

#include "commands/Commands.h"

#include "commands/LayoutWork.h"
#include "commands/LineWork.h"
#include "commands/SceneWork.h"
#include "solver/UnfoldPart.h"

namespace uvtool
{
namespace
{

std::size_t triangleCount(const std::vector<Part>& parts)
{
    std::size_t count = 0;
    for (const Part& part : parts)
        count += part.mesh.triangleCount();
    return count;
}

std::string whyNothing(const Report& report)
{
    for (const GeometryReport& geometry : report.geometries)
        if (!geometry.closedIslands.empty())
            return "every island is closed; give the mesh UVs with seams that open it";
    return "every triangle has a repeated corner";
}

void noteAnswer(const SolverAnswer& answer, double seconds, GeometryReport& entry)
{
    entry.result = answer.outcome;
    entry.seconds = seconds;
    entry.warnings.insert(entry.warnings.end(), answer.log.warnings.begin(),
                          answer.log.warnings.end());
    entry.warnings.insert(entry.warnings.end(), answer.log.errors.begin(), answer.log.errors.end());
}

/// Unfolds one part after the other. A geometry that the solver fails on keeps its UVs as a whole;
/// it is an error when all do.
void unfoldParts(Task& task, LayoutWork& work)
{
    const auto all = static_cast<double>(triangleCount(work.parts));
    std::string firstError;
    for (std::size_t i = 0; i < work.parts.size(); ++i) {
        Part& part = work.parts[i];
        if (part.isEmpty())
            continue;
        task.throwIfCancelled();
        task.beginPartOfStage(static_cast<double>(part.mesh.triangleCount()) / all);
        const Stopwatch watch;
        const SolverAnswer answer =
            unfoldPart(part, task.options.unfold, work.heldOf(part), task.console);
        noteAnswer(answer, watch.seconds(), work.entry(i));
        if (answer.outcome == Cancelled)
            throw CommandError(Interrupted, "cancelled; nothing was written");
        if (answer.outcome == Failure) {
            if (firstError.empty())
                firstError = answer.error();
            part = Part{part.geometry, {}, SolverFrame({}), {}, {}, {}};
        }
    }
    if (work.isEmpty())
        throw CommandError(Failed,
                           task.report.input + ": nothing could be unfolded: " + firstError);
}

/// Finds the edges that are to be straight, by the vertices that the file has.
void holdEdges(Task& task, LayoutWork& work)
{
    const StraightOptions& options = task.options.straight;
    forEachScene(task, [&](const SceneGeometry& scene, const SceneIslands& found) {
        const SceneEdges edges(scene, found.compactOfVertex, found.compactVertices);
        const StraightEdges straight = findStraightEdges(scene, edges, options);
        noteStraightEdges(straight, options, work.entry(0));
        work.held = sidesInDocument(task.document, task.chosen, scene, sidesAlong(edges, straight));
    });
}

void unfold(Task& task)
{
    const UnfoldOptions& options = task.options.unfold;
    task.read();
    task.probeOutputs();
    if (task.options.straight.isGiven())
        throwUnlessOneScene(task, task.options.straight.name());
    LayoutWork work(task);
    task.stage("prepare", 0.05, [&] {
        work.start(WithoutUVs);
        if (task.options.straight.isGiven())
            holdEdges(task, work);
    });
    task.stage("seams", 0.2, [&] {
        work.openAlongSeams();
        work.makeParts();
    });
    if (work.isEmpty())
        throw CommandError(Failed,
                           task.report.input + ": nothing to unfold, " + whyNothing(task.report));
    task.stage("unfold", options.pack ? 0.35 : 0.6, [&] { unfoldParts(task, work); });
    if (options.pack)
        task.stage("pack", 0.25, [&] { work.pack(); });

    LayoutDemands demands;
    demands.withoutOverlapsWithin = !options.allowCrossings;
    demands.withoutOverlapsBetween = options.pack;
    task.stage("check", 0.05, [&] { work.putIntoDocument(demands, options.pack); });
    work.writeFiles(0.05);
}

} // namespace

ExitStatus runUnfold(const Options& options, Console& console)
{
    Task task("unfold", options, console);
    task.run([&] { unfold(task); }, [&] { tellResult(task); });
    return Done;
}

} // namespace uvtool

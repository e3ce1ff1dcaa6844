#include "commands/RelaxWork.h"

#include "cli/ExitStatus.h"
#include "commands/LineWork.h"
#include "commands/SceneWork.h"
#include "document/Format.h"
#include "mesh/IdFile.h"
#include "scene/CornerUVs.h"

#include <algorithm>

namespace uvtool
{
namespace
{

LayoutQuality qualityOf(const Document& document, const DocumentLayout& layout,
                        const CheckReport& found)
{
    return {measureDistortion(layout, scenePositions(document, layout)), found.found.flipped.count,
            found.found.overlaps.crossingsWithin.count};
}

std::size_t triangleCount(const Task& task)
{
    std::size_t count = 0;
    for (const std::size_t number : task.chosen)
        count += task.document.geometries[number].triangleCount();
    return std::max<std::size_t>(count, 1);
}

bool hasUVs(const SceneGeometry& scene)
{
    return std::any_of(scene.surfaces.begin(), scene.surfaces.end(),
                       [](const SceneGeometry::Surface& surface) {
                           return surface.hasUVs && surface.fault.empty();
                       });
}

} // namespace

void RelaxWork::relax()
{
    forEachScene(task_, [this](const SceneGeometry& scene, const SceneIslands& found) {
        relax(scene, found);
    });
    if (relaxed_ > 0)
        return;
    throw CommandError(Failed,
                       task_.report.input + (firstError_.empty()
                                                 ? ": nothing to relax, there are no UVs in slot " +
                                                       std::to_string(task_.options.common.slot)
                                                 : ": nothing could be relaxed: " + firstError_));
}

void RelaxWork::relax(const SceneGeometry& scene, const SceneIslands& found)
{
    const std::size_t slot = task_.options.common.slot;
    task_.report.geometries.push_back(describe(task_.document, scene, found));
    GeometryReport& entry = task_.report.geometries.back();
    entry.islandList.reset();
    if (!hasUVs(scene)) {
        entry.warnings = {"no UVs in slot " + std::to_string(slot) + ", nothing to relax"};
        return;
    }
    const SceneEdges edges(scene, found.compactOfVertex, found.compactVertices);
    LayoutEdit edit = editOfAll(task_.document, scene, found, slot);
    choose(scene, found, edges, edit, entry);

    const DocumentLayout before = sceneLayout(task_.document, scene, found, slot, OpenIslands);
    if (!carryOut(scene, edges, edit, entry)) {
        layout_.add(before);
        return;
    }
    ++relaxed_;
    const CheckReport foundBefore = checkDocumentLayout(before);
    RelaxReport& report = entry.relax.emplace();
    report.before = qualityOf(task_.document, before, foundBefore);
    putIntoDocument(scene, found, edit, entry);
    const std::vector<char> isChanged = changedIslands(found, edit);
    report.islandsMoved =
        static_cast<std::size_t>(std::count(isChanged.begin(), isChanged.end(), 1));
    entry.islandsDone = report.islandsMoved;

    const DocumentLayout after = sceneLayout(task_.document, scene, found, slot, OpenIslands);
    entry.check = checkDocumentLayout(after);
    report.after = qualityOf(task_.document, after, *entry.check);
    if (entry.lines)
        noteLines(findLines(after, edit.held), isChanged, entry);
    check(foundBefore, *entry.check);
    layout_.add(after);
}

void RelaxWork::choose(const SceneGeometry& scene, const SceneIslands& found,
                       const SceneEdges& edges, LayoutEdit& edit, GeometryReport& entry) const
{
    const RelaxOptions& options = task_.options.relax;
    edit.operation.settings = options.settings;
    if (!options.islands.empty()) {
        throwUnlessInScene(options.islands, scene, "--islands");
        restrictToIslands(scene, found, options.islands, edit);
    } else if (!options.vertices.empty()) {
        throwUnlessInScene(options.vertices, scene, "--vertices");
        restrictToVertices(found, options.vertices, edit);
    } else if (options.vertexFile) {
        restrictToVertices(found, readVertexFile(*options.vertexFile, scene.vertexCount), edit);
    }
    if (!hasWork(scene, found, edit))
        throw CommandError(Failed, task_.report.input +
                                       ": nothing to relax, no triangle with UVs is selected");
    const StraightOptions& straight = task_.options.straight;
    if (!straight.isGiven())
        return;
    StraightEdges held = findStraightEdges(scene, edges, straight);
    noteStraightEdges(held, straight, entry);
    hold(scene, found, edges, std::move(held), edit);
}

/// False where the library fails.
bool RelaxWork::carryOut(const SceneGeometry& scene, const SceneEdges& edges, LayoutEdit& edit,
                         GeometryReport& entry)
{
    const std::size_t slot = task_.options.common.slot;
    task_.throwIfCancelled();
    task_.beginPartOfStage(static_cast<double>(scene.triangleCount()) /
                           static_cast<double>(triangleCount(task_)));
    edit.before = compactCornerUVs(scene, slot);
    const Stopwatch watch;
    const SolverAnswer answer =
        runRelaxOperation(scene, edges, slot, edit.operation, task_.console);
    entry.seconds = watch.seconds();
    if (answer.outcome == Cancelled)
        throw CommandError(Interrupted, "cancelled; nothing was written");
    edit.after = surfaceCornerUVs(scene, slot);
    entry.result = answer.outcome;
    for (const std::vector<std::string>& lines : {answer.log.warnings, answer.log.errors})
        entry.warnings.insert(entry.warnings.end(), lines.begin(), lines.end());
    if (answer.outcome == Failure && firstError_.empty())
        firstError_ = answer.error();
    return answer.outcome == Success;
}

void RelaxWork::putIntoDocument(const SceneGeometry& scene, const SceneIslands& found,
                                LayoutEdit& edit, GeometryReport& entry)
{
    const bool vRunsDownward = traitsOfFormat(task_.options.output).vRunsDownward;
    keepWhatStays(scene, found, edit);
    if (vRunsDownward)
        roundForTurnedV(scene, found, edit);
    entry.splitPolygons = writeCornerUVs(task_.document, scene, task_.options.common.slot,
                                         edit.before, edit.after, vRunsDownward);
}

void RelaxWork::check(const CheckReport& before, const CheckReport& after) const
{
    const kyUnfold3D::OptimizeSettings& settings = task_.options.relax.settings;
    LayoutDemands demands;
    demands.withoutFlips = settings.getPreventTriangleFlips() &&
                           after.found.flipped.count > before.found.flipped.count;
    demands.withoutOverlapsWithin = settings.getPreventBorderIntersections() &&
                                    before.found.overlaps.crossingsWithin.count == 0 &&
                                    before.found.overlaps.coveredWithin.count == 0;
    demands.withoutOverlapsBetween = false;
    const std::string lacks = shortcomings(after, demands);
    if (!lacks.empty())
        throw CommandError(Unsound,
                           "the result failed its check, nothing was written: it has " + lacks);
}

void RelaxWork::lookAtAll()
{
    task_.report.check = task_.report.geometries.size() == 1 ? task_.report.geometries[0].check
                                                             : checkDocumentLayout(layout_);
}

void RelaxWork::writeFiles(double share)
{
    task_.stage("write", share, [this] { writeDocument(task_.document, task_.options.output); });
    task_.draw(layout_, {});
}

} // namespace uvtool

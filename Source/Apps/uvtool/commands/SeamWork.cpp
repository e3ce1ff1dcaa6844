#include "commands/SeamWork.h"

#include "cli/ExitStatus.h"
#include "commands/SceneWork.h"
#include "document/Format.h"
#include "report/Remarks.h"
#include "scene/CornerUVs.h"
#include "scene/SewnCorners.h"
#include "scene/SideSeparation.h"
#include "scene/StartUVs.h"
#include "solver/LibraryScope.h"

#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>

namespace uvtool
{
namespace
{

/// What an operation has made of a scene.
struct SceneEdit
{
    std::vector<Vec2f> before; ///< [triangle corner]
    std::vector<Vec2f> after;
    std::size_t islands = 0; ///< that the library counts afterwards
    std::string undoFault;   ///< of runAndCheckUndo, where that was asked for
};

SceneEdit editScene(const SeamOperation& operation, const SceneGeometry& scene,
                    const Options& options)
{
    const std::size_t slot = options.common.slot;
    SceneEdit edit;
    edit.before = compactCornerUVs(scene, slot);
    const std::vector<std::uint32_t> verticesBefore = compactCorners(scene, slot);
    if (options.seams.undoCheck)
        edit.undoFault = runAndCheckUndo(scene, slot, operation);
    else
        runSeamOperation(scene, slot, operation);
    edit.after = surfaceCornerUVs(scene, slot);
    if (operation.kind == SeamOperation::CutEdges)
        separateSides(verticesBefore, compactCorners(scene, slot), edit.after);
    edit.islands =
        kyUVUtils::getAllIslandSeeds(scene.core(), scene.node, static_cast<kyUVTypes::UVSet>(slot))
            .size();
    return edit;
}

} // namespace

void SeamWork::giveStartUVs()
{
    const std::size_t slot = task_.options.common.slot;
    const bool vRunsDownward = traitsOfFormat(task_.options.output).vRunsDownward;
    const auto give = [&](std::span<const std::size_t> numbers) {
        for (const std::size_t number :
             uvtool::giveStartUVs(task_.document, numbers, slot, vRunsDownward))
            bare_.push_back(number);
    };
    if (task_.options.common.shell) {
        give(task_.chosen);
        return;
    }
    for (const std::size_t& number : task_.chosen)
        give(std::span(&number, 1));
}

void SeamWork::carryOut(const SeamPlanner& plan)
{
    forEachScene(task_, [&](const SceneGeometry& scene, const SceneIslands& found) {
        const SceneEdges edges(scene, found.compactOfVertex, found.compactVertices);
        const std::size_t number = plans_.size();
        plans_.push_back(plan(scene, found, edges));
        islandsMade_.emplace_back();
        GeometryReport entry = describe(task_.document, scene, found);
        entry.islandList.reset();
        entry.seams = plans_.back().report;
        settleStartUVs(scene, !plans_.back().sides.empty(), entry);
        task_.report.geometries.push_back(std::move(entry));
        if (!plans_.back().sides.empty())
            carryOut(plans_.back(), scene, number);
    });
}

void SeamWork::carryOut(const SeamPlan& plan, const SceneGeometry& scene, std::size_t number)
{
    GeometryReport& entry = task_.report.geometries[number];
    LibraryLog log;
    const LibraryScope scope(task_.console, log);
    const Stopwatch watch;
    SceneEdit edit = editScene(plan.operation, scene, task_.options);
    entry.seconds = watch.seconds();
    if (!edit.undoFault.empty())
        throw CommandError(Unsound,
                           "geometry " + std::to_string(entry.number) +
                               " fails the check of undo, nothing was written: " + edit.undoFault);
    entry.seams->isUndoChecked = task_.options.seams.undoCheck;
    islandsMade_[number] = edit.islands;
    const FormatTraits traits = traitsOfFormat(task_.options.output);
    if (plan.operation.kind != SeamOperation::CutEdges && !traits.hasWholeVertices)
        renewSewnCorners(task_.document, scene, plan.sides, edit.after, edit.before);
    entry.splitPolygons = writeCornerUVs(task_.document, scene, task_.options.common.slot,
                                         edit.before, edit.after, traits.vRunsDownward);
}

void SeamWork::settleStartUVs(const SceneGeometry& scene, bool isCut, GeometryReport& entry)
{
    const std::size_t slot = task_.options.common.slot;
    for (const SceneGeometry::Surface& surface : scene.surfaces) {
        if (!std::binary_search(bare_.begin(), bare_.end(), surface.number))
            continue;
        ++entry.seams->surfacesWithoutUVs;
        if (!isCut)
            takeStartUVsBack(task_.document.geometries[surface.number], slot);
    }
    if (entry.seams->surfacesWithoutUVs == scene.surfaces.size())
        std::erase(entry.slots, slot);
}

bool SeamWork::isEmpty() const
{
    return std::all_of(plans_.begin(), plans_.end(),
                       [](const SeamPlan& plan) { return plan.sides.empty(); });
}

void SeamWork::lookAgain()
{
    std::size_t number = 0;
    forEachScene(task_, [&](const SceneGeometry& scene, const SceneIslands& found) {
        noteResult(scene, found, number++);
        layout_.add(
            sceneLayout(task_.document, scene, found, task_.options.common.slot, AllIslands));
    });
}

/// Triangles keep their order in whatever is done to seams, so the sides of a plan are still there.
void SeamWork::noteResult(const SceneGeometry& scene, const SceneIslands& found, std::size_t number)
{
    const SceneEdges edges(scene, found.compactOfVertex, found.compactVertices);
    const std::vector<char> isJoined = edges.joinedSides();
    const SeamPlan& plan = plans_[number];
    const char wanted = plan.operation.kind == SeamOperation::CutEdges ? 0 : 1;
    GeometryReport& entry = task_.report.geometries[number];
    entry.result = Success;
    SeamReport& seams = *entry.seams;
    seams.unchangedEdges = static_cast<std::size_t>(
        std::count_if(plan.sides.begin(), plan.sides.end(),
                      [&](std::uint32_t side) { return isJoined[side] != wanted; }));
    seams.vertices = scene.vertexCount;
    seams.compactVertices = found.compactVertices;
    seams.islands = found.islands.size();
    seams.borderEdges = found.borderEdges;
    if (islandsMade_[number] && *islandsMade_[number] != seams.islands)
        entry.warnings.push_back(counted(*islandsMade_[number], "island", "islands") +
                                 " were made, but the UVs tell " + std::to_string(seams.islands) +
                                 " apart; where the sides of a seam have one UV it closes again");
}

void SeamWork::writeFiles(double share)
{
    if (task_.options.writesMesh())
        task_.stage("write", share,
                    [this] { writeDocument(task_.document, task_.options.output); });
    task_.draw(layout_, {});
}

} // namespace uvtool

#include "commands/EditWork.h"

#include "commands/SceneWork.h"
#include "document/Format.h"
#include "scene/CornerUVs.h"
#include "scene/SeamPlaces.h"
#include "solver/SolverAnswer.h"

#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>

namespace uvtool
{
namespace
{

std::vector<unsigned int> verticesThatMayMove(const SceneIslands& found, const LayoutEdit& edit)
{
    std::vector<unsigned int> vertices;
    for (unsigned int v = 0; v < found.compactOfVertex.size(); ++v)
        if (edit.mayMove[found.compactOfVertex[v]] != 0)
            vertices.push_back(v);
    return vertices;
}

/// [island] 1 for those with a triangle that has UVs.
std::vector<char> mappedIslands(const SceneIslands& found, const LayoutEdit& edit)
{
    std::vector<char> isMapped(found.islands.size(), 0);
    for (std::size_t t = 0; t < edit.isMapped.size(); ++t)
        if (edit.isMapped[t] != 0)
            isMapped[static_cast<std::size_t>(found.islandOfTriangle[t])] = 1;
    return isMapped;
}

DocumentLayout partOf(DocumentLayout layout, const std::vector<char>& isChosen)
{
    for (std::int32_t& island : layout.islandOfTriangle)
        if (island >= 0 && isChosen[static_cast<std::size_t>(island)] == 0)
            island = -1;
    return layout;
}

LayoutMeasures measure(const Document& document, const DocumentLayout& layout,
                       const std::vector<char>& isChosen, const CheckReport& found)
{
    LayoutMeasures measures =
        measureLayout(partOf(layout, isChosen), scenePositions(document, layout));
    measures.flipped = found.found.flipped.count;
    return measures;
}

void warnOfMore(const char* which, const Finding& before, const Finding& after,
                GeometryReport& entry)
{
    if (after.count > before.count)
        entry.warnings.push_back("triangles " + std::string(which) + ": " +
                                 std::to_string(before.count) + " before, now " +
                                 std::to_string(after.count));
}

std::string withoutUVs(std::size_t slot)
{
    return "no UVs in slot " + std::to_string(slot) + ", nothing to move";
}

} // namespace

void EditWork::choose()
{
    if (!task_.options.edit.islands.empty())
        throwUnlessOneScene(task_, "--islands");
    forEachScene(task_, [this](const SceneGeometry& scene, const SceneIslands& found) {
        subjects_.push_back(choose(scene, found));
    });
    const bool hasWork = std::any_of(subjects_.begin(), subjects_.end(),
                                     [](const Subject& subject) { return subject.hasWork(); });
    if (hasWork)
        return;
    throw CommandError(Failed, task_.report.input + ": " +
                                   (task_.options.edit.islands.empty()
                                        ? withoutUVs(task_.options.common.slot)
                                        : "nothing to move, the islands of --islands have no UVs "
                                          "in slot " +
                                              std::to_string(task_.options.common.slot)));
}

EditWork::Subject EditWork::choose(const SceneGeometry& scene, const SceneIslands& found) const
{
    const std::vector<unsigned int>& islands = task_.options.edit.islands;
    Subject subject{
        scene, found, editOfAll(task_.document, scene, found, task_.options.common.slot), {}, {}};
    subject.isChosen = mappedIslands(found, subject.edit);
    if (!islands.empty()) {
        throwUnlessInScene(islands, scene, "--islands");
        restrictToIslands(scene, found, islands, subject.edit);
        const std::vector<char> isNamed = islandsOf(scene, found, islands);
        for (std::size_t i = 0; i < isNamed.size(); ++i)
            if (isNamed[i] == 0)
                subject.isChosen[i] = 0;
    }
    if (std::count(subject.isChosen.begin(), subject.isChosen.end(), 1) > 0)
        subject.vertices = verticesThatMayMove(found, subject.edit);
    return subject;
}

UVBox EditWork::bounds() const
{
    UVBox box;
    for (const Subject& subject : subjects_) {
        if (!subject.hasWork())
            continue;
        osg::Vec2f min;
        osg::Vec2f max;
        kyUVUtils::getUVBoundingBox(subject.scene.core(), subject.scene.node,
                                    static_cast<kyUVTypes::UVSet>(task_.options.common.slot),
                                    subject.vertices.data(),
                                    static_cast<unsigned int>(subject.vertices.size()), min, max);
        box.add(Vec2f{min[0], min[1]});
        box.add(Vec2f{max[0], max[1]});
    }
    return box;
}

void EditWork::edit(const Operation& operation)
{
    for (Subject& subject : subjects_) {
        task_.throwIfCancelled();
        task_.report.geometries.push_back(describe(task_.document, subject.scene, subject.found));
        GeometryReport& entry = task_.report.geometries.back();
        entry.islandList.reset();
        if (subject.hasWork())
            edit(subject, operation, entry);
        else
            entry.warnings = {withoutUVs(task_.options.common.slot)};
        subject = {};
    }
}

void EditWork::edit(Subject& subject, const Operation& operation, GeometryReport& entry)
{
    const std::size_t slot = task_.options.common.slot;
    const DocumentLayout before =
        sceneLayout(task_.document, subject.scene, subject.found, slot, AllIslands);
    subject.edit.before = compactCornerUVs(subject.scene, slot);
    const Stopwatch watch;
    const SolverAnswer answer = askLibrary(task_.console, [&] { return operation(subject); });
    entry.seconds = watch.seconds();
    entry.result = answer.outcome;
    if (answer.outcome != Success)
        throw CommandError(Failed, task_.report.input + ": geometry " +
                                       std::to_string(entry.number) + " could not be edited" +
                                       (answer.log.errors.empty() ? "" : ": " + answer.error()));
    subject.edit.after = surfaceCornerUVs(subject.scene, slot);
    putIntoDocument(subject, entry);

    const DocumentLayout after =
        sceneLayout(task_.document, subject.scene, subject.found, slot, AllIslands);
    entry.check = checkDocumentLayout(after);
    const CheckReport foundBefore = checkDocumentLayout(before);
    entry.edit->before = measure(task_.document, before, subject.isChosen, foundBefore);
    entry.edit->after = measure(task_.document, after, subject.isChosen, *entry.check);
    warnOfMore("that turn against their islands", foundBefore.found.flipped,
               entry.check->found.flipped, entry);
    warnOfMore("without an area in UV", foundBefore.found.degenerate, entry.check->found.degenerate,
               entry);
    layout_.add(after);
}

void EditWork::putIntoDocument(Subject& subject, GeometryReport& entry)
{
    const bool vRunsDownward = traitsOfFormat(task_.options.output).vRunsDownward;
    keepWhatStays(subject.scene, subject.found, subject.edit);
    if (vRunsDownward)
        roundForTurnedV(subject.scene, subject.found, subject.edit);
    entry.splitPolygons = writeCornerUVs(task_.document, subject.scene, task_.options.common.slot,
                                         subject.edit.before, subject.edit.after, vRunsDownward);
    const std::vector<char> isChanged = changedIslands(subject.found, subject.edit);
    EditReport& report = entry.edit.emplace();
    report.islands =
        static_cast<std::size_t>(std::count(subject.isChosen.begin(), subject.isChosen.end(), 1));
    report.islandsMoved =
        static_cast<std::size_t>(std::count(isChanged.begin(), isChanged.end(), 1));
    entry.islandsDone = report.islandsMoved;
}

void EditWork::writeFiles()
{
    task_.report.check = checkDocumentLayout(layout_);
    task_.stage("write", 0.1, [this] { writeDocument(task_.document, task_.options.output); });
    task_.draw(layout_, {});
}

ExitStatus runEdit(const char* name, const Options& options, Console& console,
                   const std::function<EditWork::Operation(const EditWork&)>& makeOperation)
{
    Task task(name, options, console);
    task.run(
        [&] {
            task.read();
            task.probeOutputs();
            EditWork work(task);
            task.stage("look", 0.4, [&] { work.choose(); });
            const EditWork::Operation operation = makeOperation(work);
            task.stage("edit", 0.4, [&] { work.edit(operation); });
            work.writeFiles();
        },
        [&] { tellResult(task); });
    return Done;
}

} // namespace uvtool

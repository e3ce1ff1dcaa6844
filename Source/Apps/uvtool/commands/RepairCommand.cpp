#include "commands/Commands.h"

#include "commands/SceneWork.h"
#include "document/CornerParting.h"
#include "document/Format.h"
#include "document/TriangleRemoval.h"
#include "scene/RepairOperation.h"
#include "solver/LibraryScope.h"

#include <algorithm>
#include <utility>

namespace uvtool
{
namespace
{

/// What was done to a geometry of the document.
struct Repaired
{
    RepairCounts counts;
    std::size_t splitPolygons = 0;
    bool isLeftAlone = false; ///< nothing has an area
    double seconds = 0.0;
};

/// Takes triangles without an area out. What is nothing but these stays, as a geometry has to have
/// some; false then.
bool removeDegenerate(DocumentGeometry& geometry, FaceKind kind, Repaired& repaired)
{
    DocumentGeometry left = geometry;
    RemovedTriangles removed = removeRepeatedCorners(left);
    const std::vector<char> isDegenerate = findDegenerateTriangles(left);
    if (std::find(isDegenerate.begin(), isDegenerate.end(), 0) == isDegenerate.end())
        return false;
    removed += removeTriangles(left, isDegenerate, kind);
    geometry = std::move(left);
    repaired.counts.degenerateTriangles = removed.triangles;
    repaired.counts.droppedPolygons = removed.polygons;
    repaired.splitPolygons = removed.splitPolygons;
    return true;
}

/// Parts corners so that the vertices that they have in the file are manifold.
void repairSurface(DocumentGeometry& geometry, RepairedVertices kind, Repaired& repaired)
{
    const Repair repair = repairTriangles(geometry, kind);
    repaired.counts += repair.counts;
    repaired.splitPolygons += partCorners(geometry, repair.numberOfTriangleCorner);
}

/// Goes on with charts, in which nothing is left that touches along an edge.
void repairCharts(DocumentGeometry& geometry, std::size_t slot, Repaired& repaired)
{
    const Repair repair = repairUVs(geometry, slot);
    const std::size_t surfaceRounds = repaired.counts.rounds;
    repaired.counts += repair.counts;
    repaired.counts.rounds = surfaceRounds + repair.counts.rounds;
    repaired.splitPolygons += partUVs(geometry, slot, repair.numberOfTriangleCorner);
}

Repaired repairGeometry(Task& task, std::size_t number)
{
    task.throwIfCancelled();
    DocumentGeometry& geometry = task.document.geometries[number];
    LibraryLog log;
    const LibraryScope scope(task.console, log);
    const FormatTraits traits = traitsOfFormat(task.options.output);
    const Stopwatch watch;
    Repaired repaired;
    const FaceKind faces = traits.hasWholeVertices ? TriangleFaces : PolygonFaces;
    if (!removeDegenerate(geometry, faces, repaired)) {
        repaired.isLeftAlone = true;
        return repaired;
    }
    repairSurface(geometry, traits.hasWholeVertices ? WholeVertices : PositionVertices, repaired);
    for (std::size_t slot = 0; !traits.hasWholeVertices && slot < traits.slots; ++slot)
        repairCharts(geometry, slot, repaired);
    repaired.seconds = watch.seconds();
    return repaired;
}

/// Adds what was done to the surfaces of a scene to its entry.
void note(const SceneGeometry& scene, const std::vector<Repaired>& repairedOfNumber,
          GeometryReport& entry)
{
    entry.result = Success;
    entry.repair.emplace();
    for (const SceneGeometry::Surface& surface : scene.surfaces) {
        const Repaired& repaired = repairedOfNumber[surface.number];
        *entry.repair += repaired.counts;
        entry.splitPolygons += repaired.splitPolygons;
        entry.seconds += repaired.seconds;
        if (repaired.isLeftAlone)
            entry.warnings.emplace_back("no triangle has an area; left as it is");
    }
}

void repair(Task& task)
{
    task.read();
    task.probeOutputs();
    std::vector<Repaired> repairedOfNumber(task.document.geometries.size());
    task.stage("repair", 0.4, [&] {
        for (const std::size_t number : task.chosen)
            repairedOfNumber[number] = repairGeometry(task, number);
    });
    DocumentLayout layout;
    task.stage("look", 0.4, [&] {
        forEachScene(task, [&](const SceneGeometry& scene, const SceneIslands& found) {
            GeometryReport entry = describe(task.document, scene, found);
            entry.islandList.reset();
            note(scene, repairedOfNumber, entry);
            task.report.geometries.push_back(std::move(entry));
            layout.add(
                sceneLayout(task.document, scene, found, task.options.common.slot, AllIslands));
        });
    });
    task.stage("write", 0.15, [&] { writeDocument(task.document, task.options.output); });
    task.draw(layout, {});
}

} // namespace

ExitStatus runRepair(const Options& options, Console& console)
{
    Task task("repair", options, console);
    task.run([&] { repair(task); }, [&] { tellResult(task); });
    return Done;
}

} // namespace uvtool

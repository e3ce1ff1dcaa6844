#include "commands/Commands.h"

#include "commands/SceneWork.h"
#include "report/TextReport.h"

namespace uvtool
{
namespace
{

/// Geometries by themselves are looked at as the solver takes them.
void lookAtGeometry(Task& task, std::size_t number, std::size_t compactVertices,
                    DocumentLayout& whole)
{
    const DocumentGeometry& geometry = task.document.geometries[number];
    const std::size_t slot = task.options.common.slot;
    const Survey survey = surveyGeometry(geometry, slot, WithoutUVs);
    GeometryReport report = describe(geometry, number, survey);
    report.compactVertices = compactVertices;
    DocumentLayout own;
    own.add(geometry, static_cast<std::uint32_t>(number), slot, survey);
    if (task.chosen.size() > 1)
        report.check = checkDocumentLayout(own);
    task.report.geometries.push_back(std::move(report));
    whole.add(own);
}

void look(Task& task)
{
    DocumentLayout whole;
    forEachScene(task, [&](const SceneGeometry& scene, const SceneIslands& found) {
        if (!scene.isShell) {
            lookAtGeometry(task, scene.surfaces.front().number, found.compactVertices, whole);
            return;
        }
        task.report.geometries.push_back(describe(task.document, scene, found));
        task.report.geometries.back().islandList.reset();
        whole.add(sceneLayout(task.document, scene, found, task.options.common.slot, OpenIslands));
    });
    task.report.check = checkDocumentLayout(whole);
    if (task.report.geometries.size() == 1)
        task.report.geometries.front().check = task.report.check;
    task.draw(whole, {});
}

} // namespace

ExitStatus runInfo(const Options& options, Console& console)
{
    Task task("info", options, console);
    task.run(
        [&task] {
            task.read();
            task.probeOutputs();
            task.stage("look", 0.95, [&task] { look(task); });
        },
        [&task] {
            if (task.options.common.json)
                return;
            for (const std::string& line : textOfInfo(task.report))
                task.console.out() << line << '\n';
        });
    return Done;
}

} // namespace uvtool

#include "commands/Commands.h"

#include "commands/SceneWork.h"
#include "report/Remarks.h"
#include "report/TextReport.h"

namespace uvtool
{
namespace
{

void look(Task& task)
{
    DocumentLayout whole;
    forEachScene(task, [&](const SceneGeometry& scene, const SceneIslands& found) {
        task.report.geometries.push_back(describe(task.document, scene, found));
        whole.add(sceneLayout(task.document, scene, found, task.options.common.slot, AllIslands));
    });
    task.draw(whole, {});
}

void tell(Task& task)
{
    for (const std::string& remark : remarksOn(task.report))
        task.console.warning(remark);
    if (task.options.common.json)
        return;
    for (const std::string& line : textOfIslands(task.report))
        task.console.out() << line << '\n';
}

} // namespace

ExitStatus runIslands(const Options& options, Console& console)
{
    Task task("islands", options, console);
    task.report.listsSeeds = options.islands.list;
    task.run(
        [&task] {
            task.read();
            task.probeOutputs();
            task.stage("look", 0.95, [&task] { look(task); });
        },
        [&task] { tell(task); });
    return Done;
}

} // namespace uvtool

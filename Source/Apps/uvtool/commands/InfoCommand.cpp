#include "commands/Commands.h"

#include "commands/Task.h"
#include "report/TextReport.h"

namespace uvtool
{
namespace
{

void look(Task& task)
{
    DocumentLayout whole;
    const std::size_t slot = task.options.common.slot;
    for (const std::size_t number : task.chosen) {
        task.throwIfCancelled();
        const DocumentGeometry& geometry = task.document.geometries[number];
        const Survey survey = surveyGeometry(geometry, slot, WithoutUVs);
        task.report.geometries.push_back(describe(geometry, number, survey));
        whole.add(geometry, static_cast<std::uint32_t>(number), slot, survey);
        if (task.chosen.size() > 1) {
            DocumentLayout own;
            own.add(geometry, static_cast<std::uint32_t>(number), slot, survey);
            task.report.geometries.back().check = checkDocumentLayout(own);
        }
    }
    task.report.check = checkDocumentLayout(whole);
    if (task.chosen.size() == 1)
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

#include "commands/Task.h"

#include "cli/ExitStatus.h"
#include "document/Format.h"
#include "document/OutputFile.h"
#include "picture/LayoutPicture.h"
#include "picture/SurfacePicture.h"
#include "report/JsonReport.h"
#include "report/Remarks.h"
#include "report/TextReport.h"

#include <numeric>

namespace uvtool
{
namespace
{

/// A shell is geometry 0 of its file.
std::vector<std::size_t> chooseGeometries(const Document& document, const CommonOptions& options)
{
    if (!options.shell || !options.geometry)
        return chooseGeometries(document, options.geometry, "--geometry");
    if (*options.geometry == 0)
        return chooseGeometries(document, std::nullopt, "--geometry");
    throw CommandError(WrongUsage, "--geometry " + std::to_string(*options.geometry) +
                                       ": with --shell " + options.input.string() +
                                       " holds geometry 0 only");
}

} // namespace

std::vector<std::size_t> chooseGeometries(const Document& document,
                                          const std::optional<std::size_t>& number,
                                          const char* option)
{
    const std::size_t count = document.geometries.size();
    if (!number) {
        std::vector<std::size_t> all(count);
        std::iota(all.begin(), all.end(), std::size_t{0});
        return all;
    }
    if (*number < count)
        return {*number};
    throw CommandError(WrongUsage,
                       std::string(option) + " " + std::to_string(*number) + ": " +
                           document.path.string() +
                           (count == 1 ? " holds geometry 0 only"
                                       : " holds geometries 0 to " + std::to_string(count - 1)));
}

Task::Task(const char* name, const Options& commandOptions, Console& commandConsole)
    : options(commandOptions), console(commandConsole), bar_(commandConsole),
      progress_(std::string("uvtool ") + name, 1.0)
{
    report.command = name;
    report.input = options.common.input.string();
    report.output = options.output.string();
    report.slot = options.common.slot;
}

void Task::read()
{
    stage("read", 0.05, [this] { document = readDocument(options.common.input); });
    report.warnings = document.warnings;
    for (const std::string& warning : document.warnings)
        console.warning(report.input + ": " + warning);
    chosen = chooseGeometries(document, options.common);
}

void Task::stage(const char* name, double share, const std::function<void()>& work)
{
    throwIfCancelled();
    const Stopwatch watch;
    const double end = progress_.fraction() + share;
    stageShare_ = share;
    progress_.setScale(share);
    work();
    progress_.setScale(1.0);
    progress_.incrementBy(end - progress_.fraction());
    report.stages.emplace_back(name, watch.seconds());
}

void Task::throwIfCancelled() const
{
    if (progress_.cancelled())
        throw CommandError(Interrupted, "cancelled; nothing was written");
}

void Task::run(const std::function<void()>& work, const std::function<void()>& tell)
{
    try {
        work();
    } catch (const CommandError& error) {
        finish(error.status() == Interrupted ? Cancelled : Failure, error.what());
        throw;
    } catch (const std::exception& error) {
        finish(Failure, error.what());
        throw;
    }
    report.result = Success;
    report.seconds = watch_.seconds();
    if (options.common.json)
        printJson();
    tell();
}

void Task::draw(const DocumentLayout& layout, const std::vector<UVBox>& boxes,
                const MarkedSides& marked)
{
    const CommonOptions& common = options.common;
    if (common.picture.empty() && common.view.empty())
        return;
    const Stopwatch watch;
    if (!common.picture.empty()) {
        PictureOptions picture;
        picture.title = common.input.filename().string();
        picture.boxes = boxes;
        picture.lines = linesIn(layout, marked);
        picture.flipsAreNatural = report.projection.has_value();
        drawLayout(layout, picture, common.picture);
    }
    if (!common.view.empty())
        drawSurface(surfaceOf(document, chosen, layout), common.view, marked);
    report.stages.emplace_back("draw", watch.seconds());
}

void Task::probeOutputs() const
{
    for (const std::filesystem::path& file :
         {options.output, options.edgesOutput, options.project.savedFile, options.lattice.saved,
          options.common.picture, options.common.view})
        if (!file.empty())
            OutputFile::probe(file);
}

void Task::finish(Outcome outcome, const std::string& error)
{
    report.result = outcome;
    report.error = error;
    report.seconds = watch_.seconds();
    // Before the input is known there is nothing to tell but the error itself.
    if (options.common.json && !chosen.empty())
        printJson();
}

void Task::printJson() const
{
    console.out() << jsonReport(report) << std::flush;
    if (!console.out())
        throw CommandError(Unwritable, "standard output: the report cannot be written");
}

void tellResult(Task& task)
{
    for (const std::string& remark : remarksOn(task.report))
        task.console.warning(remark);
    if (task.options.common.json)
        return;
    for (const std::string& line : textOfResult(task.report))
        task.console.note(line);
}

} // namespace uvtool

#include "commands/Commands.h"

#include "commands/RelaxWork.h"
#include "commands/SceneWork.h"

#include <string>

namespace uvtool
{
namespace
{

/// The option by which ids of vertices were given; null without one.
const char* optionWithIds(const Options& options)
{
    const RelaxOptions& relax = options.relax;
    return !relax.islands.empty()       ? "--islands"
           : !relax.vertices.empty()    ? "--vertices"
           : relax.vertexFile           ? "--vertex-file"
           : options.straight.isGiven() ? options.straight.name()
                                        : nullptr;
}

/// It is what `constrain` is for; `optimize` has done something without.
void throwUnlessOneIsStraight(const Task& task)
{
    const GeometryReport& entry = task.report.geometries.front();
    if (entry.lines->crooked < entry.lines->lines || entry.warnings.empty())
        return;
    throw CommandError(Failed, task.report.input +
                                   ": none of the edges can be straight: " + entry.warnings.back());
}

void relax(Task& task)
{
    task.read();
    task.probeOutputs();
    if (const char* const option = optionWithIds(task.options))
        throwUnlessOneScene(task, option);
    RelaxWork work(task);
    task.stage("relax", 0.8, [&] { work.relax(); });
    if (task.options.command == Options::Constrain)
        throwUnlessOneIsStraight(task);
    task.stage("check", 0.05, [&] { work.lookAtAll(); });
    work.writeFiles(0.05);
}

ExitStatus run(const char* name, const Options& options, Console& console)
{
    Task task(name, options, console);
    task.run([&] { relax(task); }, [&] { tellResult(task); });
    return Done;
}

} // namespace

ExitStatus runOptimize(const Options& options, Console& console)
{
    return run("optimize", options, console);
}

/// It differs in what the command line has to hold.
ExitStatus runConstrain(const Options& options, Console& console)
{
    return run("constrain", options, console);
}

} // namespace uvtool

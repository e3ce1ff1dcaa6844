#include "commands/Commands.h"

#include "commands/LayoutWork.h"

namespace uvtool
{
namespace
{

void pack(Task& task)
{
    const std::size_t slot = task.options.common.slot;
    task.read();
    task.probeOutputs();
    LayoutWork work(task);
    task.stage("prepare", 0.05, [&] {
        work.start(WithUVs);
        work.makeParts();
        for (std::size_t i = 0; i < work.parts.size(); ++i)
            takeUVs(work.parts[i], work.geometry(i), slot);
    });
    if (work.isEmpty())
        throw CommandError(Failed, task.report.input + ": nothing to pack, slot " +
                                       std::to_string(slot) + " holds no UVs of an open island");
    task.stage("pack", 0.8, [&] { work.pack(); });

    // Islands keep their shape, with whatever is wrong about it.
    LayoutDemands demands;
    demands.withoutFlips = false;
    demands.withoutOverlapsWithin = false;
    task.stage("check", 0.05, [&] { work.putIntoDocument(demands, true); });
    work.writeFiles(0.05);
}

} // namespace

ExitStatus runPack(const Options& options, Console& console)
{
    Task task("pack", options, console);
    task.run([&] { pack(task); }, [&] { tellResult(task); });
    return Done;
}

} // namespace uvtool

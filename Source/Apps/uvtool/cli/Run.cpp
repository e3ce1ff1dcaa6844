#include "cli/Run.h"

#include "cli/Console.h"
#include "cli/ExitStatus.h"
#include "cli/Options.h"
#include "commands/Commands.h"
#include "document/FileError.h"

#include <exception>
#include <new>

namespace uvtool
{
namespace
{

ExitStatus perform(const Options& options, Console& console)
{
    console.setVerbosity(options.common.quiet ? Quiet : options.common.verbose ? Verbose : Normal);
    switch (options.command) {
    case Options::Info:
        return runInfo(options, console);
    case Options::Islands:
        return runIslands(options, console);
    case Options::Seams:
        return runSeams(options, console);
    case Options::Path:
        return runPath(options, console);
    case Options::Unfold:
        return runUnfold(options, console);
    case Options::Pack:
        return runPack(options, console);
    case Options::Cut:
        return runCut(options, console);
    case Options::Sew:
        return runSew(options, console);
    case Options::Optimize:
        return runOptimize(options, console);
    case Options::Constrain:
        return runConstrain(options, console);
    case Options::Repair:
        return runRepair(options, console);
    case Options::Project:
        return runProject(options, console);
    case Options::Transfer:
        return runTransfer(options, console);
    case Options::Transform:
        return runTransform(options, console);
    case Options::WorldSize:
        return runWorldSize(options, console);
    case Options::Lattice:
        return runLattice(options, console);
    }
    return WrongUsage;
}

ExitStatus parseAndPerform(std::span<const std::string> arguments, Console& console)
{
    std::string answer;
    const std::optional<Options> options = parseOptions(arguments, answer);
    if (options)
        return perform(*options, console);
    console.out() << answer << std::flush;
    return Done;
}

} // namespace

int runUvtool(std::span<const std::string> arguments, std::ostream& out, std::ostream& err,
              bool errIsTerminal)
{
    Console console(out, err, errIsTerminal);
    try {
        return parseAndPerform(arguments, console);
    } catch (const CommandError& error) {
        console.error(error.what());
        return error.status();
    } catch (const FileError& error) {
        console.error(error.what());
        return error.kind() == FileError::Read ? Unreadable : Unwritable;
    } catch (const std::bad_alloc&) {
        console.error("not enough memory for this mesh");
    } catch (const std::exception& error) {
        console.error(error.what());
    }
    return Failed;
}

} // namespace uvtool

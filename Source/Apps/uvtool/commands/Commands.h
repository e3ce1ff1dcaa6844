#pragma once

#include "cli/Console.h"
#include "cli/ExitStatus.h"
#include "cli/Options.h"

namespace uvtool
{

// The commands of the tool. Each prints its report and returns the exit status; what ends it early
// is thrown as a CommandError or a FileError.

ExitStatus runInfo(const Options& options, Console& console);
ExitStatus runIslands(const Options& options, Console& console);
ExitStatus runSeams(const Options& options, Console& console);
ExitStatus runPath(const Options& options, Console& console);
ExitStatus runUnfold(const Options& options, Console& console);
ExitStatus runPack(const Options& options, Console& console);
ExitStatus runCut(const Options& options, Console& console);
ExitStatus runSew(const Options& options, Console& console);
ExitStatus runOptimize(const Options& options, Console& console);
ExitStatus runConstrain(const Options& options, Console& console);
ExitStatus runRepair(const Options& options, Console& console);
ExitStatus runProject(const Options& options, Console& console);
ExitStatus runTransfer(const Options& options, Console& console);
ExitStatus runTransform(const Options& options, Console& console);
ExitStatus runWorldSize(const Options& options, Console& console);
ExitStatus runLattice(const Options& options, Console& console);

} // namespace uvtool

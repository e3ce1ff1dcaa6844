#pragma once

#include <ostream>
#include <span>
#include <string>

namespace uvtool
{

/// The tool without its process: does what a command line asks for.
///
/// arguments      what stands behind the program's name
/// out            asked-for text and reports, and nothing else
/// err            messages; never std::cout, which the library writes to
/// errIsTerminal  shows a progress bar on it
///
/// Returns the exit status, of ExitStatus. Nothing is thrown. One run at a time in a process.
int runUvtool(std::span<const std::string> arguments, std::ostream& out, std::ostream& err,
              bool errIsTerminal = false);

} // namespace uvtool

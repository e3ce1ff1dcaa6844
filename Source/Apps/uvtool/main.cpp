#include "cli/Run.h"

#include "Utils/kyStackedProgress.h"

#include <csignal>
#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{

/// The first Ctrl-C asks the work to stop, a second one ends the process at once.
void stopWorkOnInterrupt()
{
    struct sigaction action = {};
    action.sa_handler = [](int) { kyStackedProgress::requestCancel(); };
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGINT, &action, nullptr);
}

} // namespace

int main(int argc, char** argv)
{
    stopWorkOnInterrupt();
    // A reader that goes away shall be a failed write, not the end of the process.
    std::signal(SIGPIPE, SIG_IGN);
    // Streams of their own: the library writes to std::cout and std::cerr, which are redirected
    // meanwhile.
    std::ostream out(std::cout.rdbuf());
    std::ostream err(std::cerr.rdbuf());
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    return uvtool::runUvtool(arguments, out, err, isatty(STDERR_FILENO) != 0);
}

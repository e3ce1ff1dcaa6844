#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace uvtool
{

/// What the tool tells the shell at its end.
enum ExitStatus : std::int32_t
{
    Done = 0,
    Failed = 1,       ///< the operation failed or had nothing to work on
    WrongUsage = 2,   ///< the command line asks for what isn't there
    Unreadable = 3,   ///< the input could not be read
    Unwritable = 4,   ///< the output could not be written
    Unsound = 5,      ///< the result failed its own check; nothing was written
    Interrupted = 130 ///< cancelled with Ctrl-C
};

/// Ends a command. The text is one line for the user: what went wrong, where, and what to do.
class CommandError : public std::runtime_error
{
public:
    CommandError(ExitStatus status, const std::string& what)
        : std::runtime_error(what), status_(status)
    {}

    ExitStatus status() const { return status_; }

private:
    ExitStatus status_;
};

} // namespace uvtool

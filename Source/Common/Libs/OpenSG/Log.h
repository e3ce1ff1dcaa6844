#pragma once

#include <functional>
#include <string>

namespace osg
{

/// How much a line of the log matters: the lower, the more.
struct LogLevel
{
    enum Level : unsigned
    {
        Fatal = 0,
        Warning = 1,
        Notice = 2,
        Info = 3,
        Debug = 4
    };
};

/// Receives the level, the module that speaks, and the text as it was given, with a line end or
/// without.
using LogHandler =
    std::function<void(unsigned level, const std::string& module, const std::string& text)>;

/// Writes a line to the log of the scene graph.
void log(unsigned level, const std::string& module, const std::string& text);

/// Where the lines go; an empty function brings back the start: Fatal and Warning to standard
/// error, the rest nowhere. Returns the handler that was set before.
LogHandler setLogHandler(LogHandler handler);

} // namespace osg

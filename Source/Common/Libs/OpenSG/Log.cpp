#include "OpenSG/Log.h"

#include <iostream>
#include <utility>

namespace osg
{

namespace
{

LogHandler& currentHandler()
{
    static auto& handler = *new LogHandler; // leaked: containers log after main
    return handler;
}

} // namespace

void log(unsigned level, const std::string& module, const std::string& text)
{
    // A copy: the handler may set another one.
    if (const LogHandler handler = currentHandler())
        handler(level, module, text);
    else if (level <= LogLevel::Warning)
        std::cerr << module << ": " << text << (text.ends_with('\n') ? "" : "\n");
}

LogHandler setLogHandler(LogHandler handler)
{
    return std::exchange(currentHandler(), std::move(handler));
}

} // namespace osg

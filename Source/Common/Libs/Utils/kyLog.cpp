#include "Utils/kyLog.h"

#include <cstdarg>
#include <cstdio>
#include <iostream>

namespace
{

void writeToStandardError(const kyLog::Line& line)
{
    static const char* const prefixOfLevel[] = {"Error: ", "Warning: ", ""};
    std::cerr << prefixOfLevel[line.level] << line.text << std::endl;
}

// Leaked on purpose: static objects of the library may log while they die, after main.
kyLog::Sink& currentSink()
{
    static auto* sink = new kyLog::Sink(writeToStandardError);
    return *sink;
}

std::string formatted(const char* format, std::va_list arguments)
{
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    std::string text;
    if (length > 0) {
        text.resize(static_cast<std::size_t>(length));
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    }
    va_end(again);
    return text;
}

void log(kyLog::Level level, bool forRecordOnly, const char* format, std::va_list arguments)
{
    const kyLog::Line line{level, forRecordOnly, formatted(format, arguments)};
    // A copy, since a sink may put another sink in its place.
    const kyLog::Sink sink = currentSink();
    sink(line);
}

} // namespace

void kyLog::error(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    log(Error, false, format, arguments);
    va_end(arguments);
}

void kyLog::warning(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    log(Warning, false, format, arguments);
    va_end(arguments);
}

void kyLog::info(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    log(Info, false, format, arguments);
    va_end(arguments);
}

void kyLog::errorNR(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    log(Error, true, format, arguments);
    va_end(arguments);
}

void kyLog::warningNR(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    log(Warning, true, format, arguments);
    va_end(arguments);
}

void kyLog::infoNR(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    log(Info, true, format, arguments);
    va_end(arguments);
}

void kyLog::setSink(Sink sink)
{
    currentSink() = sink ? std::move(sink) : Sink(writeToStandardError);
}

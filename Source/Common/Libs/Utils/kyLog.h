#pragma once

#include <cstdint>
#include <functional>
#include <string>

/// The log of the application: one line a call, with a printf-style format.
///
/// What comes from outside, such as the name of a node, is an argument and never the format, so a
/// percent sign in it does no harm. The forms with the ending NR ("no report") are for the record:
/// an application shows the plain forms to its user and keeps these in its log file only.
class kyLog
{
public:
    enum Level : std::int32_t
    {
        Error,
        Warning,
        Info
    };

    /// One line of the log, without an end of line.
    struct Line
    {
        Level level = Info;
        bool forRecordOnly = false; ///< logged through one of the NR forms
        std::string text;
    };
    using Sink = std::function<void(const Line&)>;

    [[gnu::format(printf, 1, 2)]] static void error(const char* format, ...);
    [[gnu::format(printf, 1, 2)]] static void warning(const char* format, ...);
    [[gnu::format(printf, 1, 2)]] static void info(const char* format, ...);
    [[gnu::format(printf, 1, 2)]] static void errorNR(const char* format, ...);
    [[gnu::format(printf, 1, 2)]] static void warningNR(const char* format, ...);
    [[gnu::format(printf, 1, 2)]] static void infoNR(const char* format, ...);

    /// Lines go to `sink` from here on, on the thread that logs. Null brings back the start sink,
    /// which writes "Error: ", "Warning: " or nothing and the text as a line to std::cerr.
    static void setSink(Sink sink);
};

#include "cli/Console.h"

namespace uvtool
{
namespace
{

constexpr const char* startOfCleanLine = "\r\033[K";

} // namespace

void Console::error(std::string_view text)
{
    line("uvtool: error: ", text);
}

void Console::warning(std::string_view text)
{
    if (verbosity_ != Quiet)
        line("uvtool: warning: ", text);
}

void Console::note(std::string_view text)
{
    if (verbosity_ != Quiet)
        line("", text);
}

void Console::detail(std::string_view text)
{
    if (verbosity_ == Verbose)
        line("", text);
}

void Console::setStatusLine(const std::string& text)
{
    if (!showsProgress() || text == statusLine_)
        return;
    statusLine_ = text;
    err_ << startOfCleanLine << statusLine_ << std::flush;
}

void Console::line(const char* prefix, std::string_view text)
{
    if (!statusLine_.empty())
        err_ << startOfCleanLine;
    err_ << prefix << text << '\n' << statusLine_ << std::flush;
}

} // namespace uvtool

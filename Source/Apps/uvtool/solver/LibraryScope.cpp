#include "solver/LibraryScope.h"

#include "Utils/kyLog.h"

#include <iostream>
#include <sstream>

namespace uvtool
{
namespace
{

/// Takes everything and keeps nothing.
class Nowhere : public std::streambuf
{
protected:
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

/// A text of several lines counts as several. Who says it goes without saying.
void keep(const std::string& text, const std::string& prefix, std::vector<std::string>& lines)
{
    std::istringstream stream(text.starts_with(prefix) ? text.substr(prefix.size()) : text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
}

} // namespace

LibraryScope::LibraryScope(Console& console, LibraryLog& log)
    : nowhere_(std::make_unique<Nowhere>()),
      before_(std::cout.rdbuf(console.isVerbose() ? console.err().rdbuf() : nowhere_.get()))
{
    kyLog::setSink([&console, &log](const kyLog::Line& line) {
        console.detail(line.text);
        if (line.level == kyLog::Error)
            keep(line.text, "Unfold3D error: ", log.errors);
        else if (line.level == kyLog::Warning)
            keep(line.text, "Unfold3D warning: ", log.warnings);
    });
}

LibraryScope::~LibraryScope()
{
    kyLog::setSink(nullptr);
    std::cout.rdbuf(before_);
}

} // namespace uvtool

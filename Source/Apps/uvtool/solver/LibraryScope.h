#pragma once

#include "cli/Console.h"

#include <memory>
#include <streambuf>
#include <string>
#include <vector>

namespace uvtool
{

/// What the library logged, a line each.
struct LibraryLog
{
    std::vector<std::string> errors;
    std::vector<std::string> warnings;
};

/// Surrounds a call of the library: its own lines, which it prints through std::cout, go to the
/// console when that is verbose, else nowhere, and what it logs is kept.
class LibraryScope
{
public:
    /// Both have to outlive it.
    LibraryScope(Console& console, LibraryLog& log);
    ~LibraryScope();
    LibraryScope(const LibraryScope&) = delete;
    LibraryScope& operator=(const LibraryScope&) = delete;

private:
    std::unique_ptr<std::streambuf> nowhere_;
    std::streambuf* before_;
};

} // namespace uvtool

#pragma once

#include "cli/ExitStatus.h"
#include "cli/Run.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace uvtool::test
{

/// One run of the tool and what came of it.
struct ToolRun
{
    int status;
    std::string out;
    std::string err;

    auto lineCount() const { return std::count(err.begin(), err.end(), '\n'); }
    nlohmann::json json() const { return nlohmann::json::parse(out); }
};

inline ToolRun runTool(const std::vector<std::string>& arguments, bool onTerminal = false)
{
    std::ostringstream out;
    std::ostringstream err;
    const int status = runUvtool(arguments, out, err, onTerminal);
    return {status, out.str(), err.str()};
}

} // namespace uvtool::test

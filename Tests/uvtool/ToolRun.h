#pragma once

#include "cli/ExitStatus.h"
#include "cli/Run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
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

/// Expects what a command line comes to that is given an output file: a status, and text on
/// standard error, which of a run that fails is one line and all there is.
inline void expectTold(std::vector<std::string> arguments, const std::filesystem::path& out,
                       int status, const std::string& says)
{
    SCOPED_TRACE(testing::PrintToString(arguments) + ": " + says);
    std::filesystem::remove(out);
    arguments.insert(arguments.end(), {"-o", out});
    const ToolRun run = runTool(arguments);
    EXPECT_EQ(run.status, status);
    EXPECT_THAT(run.err, testing::HasSubstr(says));
    EXPECT_EQ(std::filesystem::exists(out), status == Done);
    if (status != Done) {
        EXPECT_EQ(run.lineCount(), 1) << run.err;
        EXPECT_EQ(run.out, "");
    }
}

} // namespace uvtool::test

#pragma once

#include "cli/Options.h"

#include <CLI/App.hpp>

#include <string>

namespace uvtool
{

/// Adds the options of its own to `path`.
void addPathOptions(CLI::App& command, PathOptions& path);

/// Why a path can't begin with the vertices that were named; empty if it can.
std::string faultOfPath(const PathOptions& path);

} // namespace uvtool

#pragma once

#include "cli/Options.h"

#include <CLI/App.hpp>

#include <cstdint>

namespace uvtool
{

/// Adds the options on relaxing to a command.
void addRelaxOptions(CLI::App& command, RelaxOptions& relax);

/// Whether a command is of use without edges to hold straight.
enum StraightNeed : std::int32_t
{
    MayHoldEdges,
    HasToHoldEdges
};

/// Adds the files of edges that are to be straight.
void addStraightOptions(CLI::App& command, StraightOptions& straight, StraightNeed need);

} // namespace uvtool

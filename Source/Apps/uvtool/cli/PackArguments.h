#pragma once

#include "cli/Options.h"

#include <CLI/App.hpp>

namespace uvtool
{

/// Adds the options on packing to a command.
void addPackOptions(CLI::App& command, PackOptions& pack);

/// Has the packing turn islands upside down at most, so that lines along an axis stay so, once the
/// options of the command have been read. A CommandError of status WrongUsage where these ask for
/// other turns.
void keepLinesAligned(const CLI::App& command, kyUnfold3D::PackSettings& settings);

/// Islands may be turned in steps of so many degrees; 0: not at all.
void setTurnStep(double step, kyUnfold3D::PackSettings& settings);

} // namespace uvtool

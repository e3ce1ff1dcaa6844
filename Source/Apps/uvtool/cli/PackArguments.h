#pragma once

#include "cli/Options.h"

#include <CLI/App.hpp>

namespace uvtool
{

/// Adds the options on packing to a command.
void addPackOptions(CLI::App& command, PackOptions& pack);

/// Islands may be turned in steps of so many degrees; 0: not at all.
void setTurnStep(double step, kyUnfold3D::PackSettings& settings);

} // namespace uvtool

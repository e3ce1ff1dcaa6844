#pragma once

#include "cli/Options.h"

#include <CLI/App.hpp>

namespace uvtool
{

/// Adds the options of its own to `cut`.
void addCutOptions(CLI::App& command, CutOptions& cut, SeamOptions& seams);

/// Adds the options of its own to `sew`.
void addSewOptions(CLI::App& command, SewOptions& sew, SeamOptions& seams);

} // namespace uvtool

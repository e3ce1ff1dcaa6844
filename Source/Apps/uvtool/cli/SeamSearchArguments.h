#pragma once

#include "cli/Options.h"

#include <CLI/App.hpp>

#include <string>

namespace uvtool
{

/// Adds the options on the search for seams to a command.
///
/// modeOption  the name that the option on the mode has there
void addSeamSearch(CLI::App& command, const char* modeOption, SeamSearchOptions& search);

/// Why an option that was given has no place beside the mode, as a message; empty where all fit.
std::string misplacedSeamOption(const SeamSearchOptions& search);

} // namespace uvtool

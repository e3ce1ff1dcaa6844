#pragma once

#include "cli/Options.h"

#include <CLI/App.hpp>

#include <string>

namespace uvtool
{

/// Adds the options of its own to `transfer`, but for the source.
void addTransferOptions(CLI::App& command, TransferOptions& transfer);

/// "bvh", "octree", "normal".
std::string nameOf(TransferMethod method);

} // namespace uvtool

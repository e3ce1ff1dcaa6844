#pragma once

#include "cli/Options.h"

#include <CLI/App.hpp>

#include <string>

namespace uvtool
{

// The options of the commands that move UVs as they are told to; each takes --islands as well.

void addTransformOptions(CLI::App& command, EditOptions& edit, TransformOptions& transform);
void addWorldSizeOptions(CLI::App& command, EditOptions& edit, WorldSizeOptions& worldSize);
void addLatticeOptions(CLI::App& command, EditOptions& edit, LatticeOptions& lattice);

/// Why the options of a lattice don't go together; empty where they do.
std::string faultOfLattice(const LatticeOptions& lattice, bool hasOutput);

} // namespace uvtool

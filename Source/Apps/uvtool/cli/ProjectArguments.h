#pragma once

#include "cli/Options.h"

#include <CLI/CLI.hpp>

#include <span>

namespace uvtool
{

struct ProjectionCommand
{
    ProjectOptions::Kind kind;
    const char* name;
    const char* help;
};

std::span<const ProjectionCommand> projectionCommands();
const char* nameOf(ProjectOptions::Kind kind);

/// Adds what the projections have in common, and what only this one has.
void addProjectOptions(CLI::App& command, ProjectOptions::Kind kind, ProjectOptions& project);

} // namespace uvtool

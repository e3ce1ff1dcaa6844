#pragma once

#include "cli/NumberRange.h"

#include <CLI/CLI.hpp>

#include <vector>

namespace uvtool
{

/// Adds an option that takes ids of vertices with commas between them.
inline CLI::Option* addIdOption(CLI::App& command, const char* name, std::vector<unsigned int>& ids,
                                const char* text)
{
    return command.add_option(name, ids, text)
        ->delimiter(',')
        ->check(numberFrom<unsigned int>(0))
        ->type_name("ID,ID,...");
}

} // namespace uvtool

#pragma once

#include "report/Report.h"

#include <string>
#include <vector>

namespace uvtool
{

/// What a command that relaxed layouts has done to all geometries together, as lines to read; none
/// of another command.
std::vector<std::string> textOfRelaxing(const Report& report);

/// How many lines of edges are straight, as one line; none where no edges were named.
std::vector<std::string> textOfLines(const Report& report);

} // namespace uvtool

#pragma once

#include "report/Report.h"

#include <string>
#include <vector>

namespace uvtool
{

/// What wasn't as the solver would like it, a line for each kind: islands that keep their UVs,
/// sheets that were separated, triangles left out, polygons split, warnings of the library. Long
/// lists of places end in "and 12 more".
std::vector<std::string> remarksOn(const Report& report);

/// "1 island", "2 islands".
std::string counted(std::size_t count, const char* single, const char* plural);

} // namespace uvtool

#pragma once

#include "report/Report.h"

#include <string>
#include <vector>

namespace uvtool
{

/// What a command that moves UVs as it is told to has done to all geometries together, as lines to
/// read; none of another command.
std::vector<std::string> textOfEdit(const Report& report);

/// "0 0 to 1 0.5".
std::string textOfBounds(const UVBox& bounds);

} // namespace uvtool

#pragma once

#include "report/Report.h"

#include <string>
#include <vector>

namespace uvtool
{

/// With what settings images were thrown, and what became of the vertices, as lines to read; none
/// of another command.
std::vector<std::string> textOfProjection(const Report& report);

} // namespace uvtool

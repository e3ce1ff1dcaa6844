#pragma once

#include "report/Report.h"

#include <string>
#include <vector>

namespace uvtool
{

/// What was carried over from where, and what became of seams, as lines to read; none of another
/// command.
std::vector<std::string> textOfTransfer(const Report& report);

} // namespace uvtool

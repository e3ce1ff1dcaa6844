#pragma once

#include "report/Report.h"

#include <string>

namespace uvtool
{

/// The report as one JSON object, indented, with a line end behind it. Docs/uvtool.md tells the
/// keys. Bytes of names that aren't UTF-8 are replaced; numbers that aren't finite become null.
std::string jsonReport(const Report& report);

} // namespace uvtool

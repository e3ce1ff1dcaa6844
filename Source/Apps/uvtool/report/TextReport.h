#pragma once

#include "report/Report.h"

#include <string>
#include <vector>

namespace uvtool
{

/// The report of `info` as lines to read.
std::vector<std::string> textOfInfo(const Report& report);

/// The report of a command that changed UVs, as lines to read: what was done, what the result is
/// like, and what took the time.
std::vector<std::string> textOfResult(const Report& report);

/// What there is to know about a geometry that isn't as the solver would like it: sheets that were
/// separated, triangles left out, islands that keep their UVs. A sentence each, naming it.
std::vector<std::string> remarksOn(const GeometryReport& geometry, const std::string& command);

} // namespace uvtool

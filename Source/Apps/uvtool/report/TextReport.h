#pragma once

#include "report/Report.h"

#include <string>
#include <vector>

namespace uvtool
{

/// The report of `info` as lines to read.
std::vector<std::string> textOfInfo(const Report& report);

/// The report of `islands` as lines to read: the geometries, then each island.
std::vector<std::string> textOfIslands(const Report& report);

/// The report of `seams` as lines to read: what was found for each geometry.
std::vector<std::string> textOfSeams(const Report& report);

/// The report of `path` as a line to read.
std::string textOfPath(const PathReport& path);

/// The report of a command that changed UVs, as lines to read: what was done, what the result is
/// like, and what took the time.
std::vector<std::string> textOfResult(const Report& report);

/// "organic", "manufactured", "baking".
const char* nameOfMode(kyUVTypes::SeamMode mode);

} // namespace uvtool

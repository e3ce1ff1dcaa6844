#pragma once

#include "check/Lines.h"
#include "report/Report.h"
#include "scene/StraightEdges.h"

#include <vector>

namespace uvtool
{

/// Notes in a report which edges were named to lie along an axis, with warnings about those that
/// can't. A CommandError of status Failed when none can.
void noteStraightEdges(const StraightEdges& straight, const StraightOptions& options,
                       GeometryReport& entry);

/// Notes what came of them. A line that isn't straight is a CommandError of status Unsound, unless
/// the library has warned of lines that it gave up, or has left the island alone.
///
/// lines     as they stand in the document
/// isChanged [island] 0 for those that are as they were read
void noteLines(const std::vector<HeldLine>& lines, const std::vector<char>& isChanged,
               GeometryReport& entry);

} // namespace uvtool

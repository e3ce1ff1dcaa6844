#pragma once

#include "Unfold3D/commands/Answer.h"
#include "Unfold3D/commands/Params.h"
#include "Unfold3D/commands/UnfoldIsland.h"

#include <span>

namespace unfold3d
{

/// Tells the caller what became of the islands that were to be unfolded.
///
///   "Warning"                 what was left as it was, and what to do about it
///   "Warning.TopoUV"          which islands that were, a line each
///   "#Report.Methods string"  which methods served how many islands, a line each
///
/// chosen   [i]  number of the island
/// results  [i]
/// Throws CommandError when there were islands to unfold and none could be.
void reportUnfold(const Session& session, std::span<const int> chosen,
                  std::span<const IslandUnfold> results, Answer& answer);

} // namespace unfold3d

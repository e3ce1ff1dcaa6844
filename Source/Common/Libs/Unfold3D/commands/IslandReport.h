#pragma once

#include "Unfold3D/commands/Answer.h"
#include "Unfold3D/commands/IslandLayout.h"
#include "Unfold3D/commands/Params.h"

#include <span>
#include <string>

namespace unfold3d
{

/// What a command does.
struct CommandVerb
{
    std::string infinitive; ///< "unfold"
    std::string participle; ///< "unfolded"
};

/// Tells the caller what became of the islands that a command was to lay flat.
///
///   "Warning"                 what was left as it was, and what to do about it
///   "Warning.TopoUV"          which islands that were, and which vertices of constrained edges
///   can't
///                             lie on a line, a line each
///   "#Report.Methods string"  which methods served how many islands, a line each
///
/// chosen   [i]  number of the island
/// results  [i]
/// Throws CommandError when there were islands to work on and all have obstacles.
void reportIslands(const Session& session, std::span<const int> chosen,
                   std::span<const IslandLayout> results, const CommandVerb& verb, Answer& answer);

} // namespace unfold3d

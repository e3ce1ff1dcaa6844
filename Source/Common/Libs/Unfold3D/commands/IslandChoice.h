#pragma once

#include "Unfold3D/commands/Params.h"
#include "Unfold3D/commands/Session.h"

#include <string>
#include <vector>

namespace unfold3d
{

/// [vertex] the vertices that a command is to work on: those that the selection of the kind under
/// `#PrimType string Island` touches, or all.
///
/// `participle` is what the command does with them, for the error about an unknown kind.
std::vector<char> chosenVertices(Session& session, const Params& params,
                                 const std::string& participle);

/// The islands with a triangle and one of these vertices, ascending.
std::vector<int> islandsOf(const Session& session, const std::vector<char>& isChosen);

} // namespace unfold3d

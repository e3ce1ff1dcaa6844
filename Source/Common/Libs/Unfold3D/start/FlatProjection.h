#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/Vec.h"

#include <optional>
#include <vector>

namespace unfold3d
{

/// An island as it is seen along its mean normal ([vertex]), where every triangle shows its front
/// by an exact test and the border doesn't cross itself; nothing otherwise. Near linear.
std::optional<std::vector<Vec2>> flatProjection(const IslandMesh& mesh);

} // namespace unfold3d

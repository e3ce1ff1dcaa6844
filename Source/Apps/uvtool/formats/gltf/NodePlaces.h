#pragma once

#include "document/Transform.h"
#include "formats/gltf/GltfJson.h"

#include <vector>

namespace uvtool
{

/// From the space of each mesh to the scene's, by the first node that shows it: nodes of the
/// default scene first, depth first, then all others. The identity for a mesh that no node shows.
///
/// A GltfError when nodes form a circle, have two parents, or a place that isn't finite.
std::vector<SceneMatrix> placesOfMeshes(const Json& json);

} // namespace uvtool

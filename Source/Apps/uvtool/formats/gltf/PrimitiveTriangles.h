#pragma once

#include "formats/gltf/GltfModel.h"

#include <cstdint>
#include <span>
#include <vector>

namespace uvtool
{

/// The triangles that a list of indices stands for, three indices each, wound as the format says.
/// Indices at the end that don't make up a triangle are left out. Triangles of a strip that name a
/// vertex twice stay.
std::vector<std::uint32_t> trianglesOf(GltfMode mode, std::span<const std::uint32_t> indices);

} // namespace uvtool

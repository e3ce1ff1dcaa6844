#pragma once

#include "formats/gltf/GltfJson.h"

#include <cstdint>
#include <vector>

namespace uvtool
{

/// How often the accessors and buffer views of a file are named in it.
struct GltfReferences
{
    std::vector<std::uint32_t> ofAccessor;
    std::vector<std::uint32_t> ofView;
};

/// Counts. In extensions that aren't part of the standard every whole number counts as the name of
/// an accessor, so that nothing they may use is taken for free.
GltfReferences countReferences(const Json& json);

} // namespace uvtool

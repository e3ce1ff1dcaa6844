#pragma once

#include "OpenSG/GeoProperty.h"

#include <cstdint>
#include <span>

namespace osg
{

/// Calls `function` with the numbers of an index property where they lie: a span of 16 or of 32
/// bits an id, which is also the way to write them. A null property gives an empty span. Returns
/// what the function does.
template <class Function>
decltype(auto) withIndices(const GeoIndicesPtr& indices, const Function& function)
{
    if (const auto narrow = dcast<GeoIndicesUI16>(indices))
        return function(narrow->values());
    const auto wide = dcast<GeoIndicesUI32>(indices);
    return function(wide ? wide->values() : std::span<std::uint32_t>());
}

} // namespace osg

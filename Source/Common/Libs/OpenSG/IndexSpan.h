#pragma once

#include "OpenSG/GeoProperty.h"

#include <cstdint>
#include <span>

namespace osg
{

/// Calls `function` with the numbers of an index property where they lie: a span of 16 or of 32
/// bits an id, to be read. Null gives an empty span. Returns what the function does.
template <class Function>
decltype(auto) withIndices(const GeoIndices* indices, const Function& function)
{
    if (const auto* narrow = dynamic_cast<const GeoIndicesUI16*>(indices))
        return function(narrow->values());
    const auto* wide = dynamic_cast<const GeoIndicesUI32*>(indices);
    return function(wide ? wide->values() : std::span<const std::uint32_t>());
}

template <class Function>
decltype(auto) withIndices(const GeoIndicesPtr& indices, const Function& function)
{
    return withIndices(indices.get(), function);
}

/// The same with spans that the function writes to, so that the property forgets what it knows of
/// its numbers.
template <class Function>
decltype(auto) writeIndices(const GeoIndicesPtr& indices, const Function& function)
{
    if (const auto narrow = dcast<GeoIndicesUI16>(indices))
        return function(narrow->values());
    const auto wide = dcast<GeoIndicesUI32>(indices);
    return function(wide ? wide->values() : std::span<std::uint32_t>());
}

} // namespace osg

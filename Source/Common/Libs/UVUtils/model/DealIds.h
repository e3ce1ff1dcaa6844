#pragma once

#include "UVUtils/model/ActiveSurfaces.h"

#include <functional>
#include <span>
#include <vector>

/// Deals ids out to surfaces and calls `receive` once for each surface that got any, with its ids
/// counted from its own first vertex. Ids beyond the last surface are dropped; a repeated id is
/// dealt as often as it stands.
///
/// keepOrder  a surface gets its ids in the order in which they stand in `ids`; else ascending
void dealIds(
    std::span<const ActiveSurface> surfaces, std::span<const unsigned int> ids, bool keepOrder,
    const std::function<void(const ActiveSurface&, const std::vector<unsigned int>&)>& receive);

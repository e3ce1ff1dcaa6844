#include "UVUtils/model/DealIds.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

namespace
{

using Ids = std::vector<unsigned int>;
using Receiver = std::function<void(const ActiveSurface&, const Ids&)>;

std::uint64_t endOf(const ActiveSurface& surface)
{
    return std::uint64_t{surface.firstId} + surface.vertexCount;
}

void dealAscending(std::span<const ActiveSurface> surfaces, std::span<const unsigned int> ids,
                   const Receiver& receive)
{
    auto next = ids.begin();
    for (const ActiveSurface& surface : surfaces) {
        if (next == ids.end())
            return;
        const auto first = next;
        next = std::lower_bound(first, ids.end(), endOf(surface));
        if (first == next)
            continue;
        Ids localIds(first, next);
        for (unsigned int& id : localIds)
            id -= surface.firstId;
        receive(surface, localIds);
    }
}

/// Places in `ids`, in ascending order of the ids there.
Ids placesByAscendingId(std::span<const unsigned int> ids)
{
    Ids places(ids.size());
    std::iota(places.begin(), places.end(), 0U);
    std::stable_sort(places.begin(), places.end(),
                     [&](unsigned int a, unsigned int b) { return ids[a] < ids[b]; });
    return places;
}

void dealInTheirOrder(std::span<const ActiveSurface> surfaces, std::span<const unsigned int> ids,
                      const Receiver& receive)
{
    Ids places = placesByAscendingId(ids);
    auto next = places.begin();
    for (const ActiveSurface& surface : surfaces) {
        if (next == places.end())
            return;
        const auto first = next;
        next = std::find_if(first, places.end(),
                            [&](unsigned int place) { return ids[place] >= endOf(surface); });
        if (first == next)
            continue;
        std::sort(first, next);
        Ids localIds;
        localIds.reserve(static_cast<std::size_t>(next - first));
        std::transform(first, next, std::back_inserter(localIds),
                       [&](unsigned int place) { return ids[place] - surface.firstId; });
        receive(surface, localIds);
    }
}

} // namespace

void dealIds(
    std::span<const ActiveSurface> surfaces, std::span<const unsigned int> ids, bool keepOrder,
    const std::function<void(const ActiveSurface&, const std::vector<unsigned int>&)>& receive)
{
    if (std::is_sorted(ids.begin(), ids.end())) {
        dealAscending(surfaces, ids, receive);
    } else if (keepOrder) {
        dealInTheirOrder(surfaces, ids, receive);
    } else {
        Ids sorted(ids.begin(), ids.end());
        std::sort(sorted.begin(), sorted.end());
        dealAscending(surfaces, sorted, receive);
    }
}

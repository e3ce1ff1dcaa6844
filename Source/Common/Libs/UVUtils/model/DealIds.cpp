#include "UVUtils/model/DealIds.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

namespace
{

/// Places in `ids`, in ascending order of the ids there.
std::vector<unsigned int> placesByAscendingId(std::span<const unsigned int> ids)
{
    std::vector<unsigned int> places(ids.size());
    std::iota(places.begin(), places.end(), 0U);
    if (!std::is_sorted(ids.begin(), ids.end()))
        std::stable_sort(places.begin(), places.end(),
                         [&](unsigned int a, unsigned int b) { return ids[a] < ids[b]; });
    return places;
}

} // namespace

void dealIds(
    std::span<const ActiveSurface> surfaces, std::span<const unsigned int> ids, bool keepOrder,
    const std::function<void(const ActiveSurface&, const std::vector<unsigned int>&)>& receive)
{
    std::vector<unsigned int> places = placesByAscendingId(ids);
    auto next = places.begin();
    for (const ActiveSurface& surface : surfaces) {
        if (next == places.end())
            return;
        const auto first = next;
        const std::uint64_t end = std::uint64_t{surface.firstId} + surface.vertexCount;
        while (next != places.end() && ids[*next] < end)
            ++next;
        if (first == next)
            continue;
        if (keepOrder)
            std::sort(first, next);
        std::vector<unsigned int> localIds;
        localIds.reserve(static_cast<std::size_t>(next - first));
        std::transform(first, next, std::back_inserter(localIds),
                       [&](unsigned int place) { return ids[place] - surface.firstId; });
        receive(surface, localIds);
    }
}

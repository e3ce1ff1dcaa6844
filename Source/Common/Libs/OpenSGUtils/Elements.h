#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <vector>

// Elements of N ids each, one after the other in one list.

template <std::size_t N>
using Element = std::array<unsigned int, N>;

/// Calls `visit` with each whole element of N ids.
template <std::size_t N, class Visit>
void forEachElement(const std::vector<unsigned int>& ids, const Visit& visit)
{
    for (std::size_t first = 0; first + N <= ids.size(); first += N)
        visit(std::span<const unsigned int, N>(ids.data() + first, N));
}

/// Those that don't fill an element.
inline std::span<const unsigned int> leftOver(const std::vector<unsigned int>& ids,
                                              std::size_t idsPerElement)
{
    return std::span(ids).last(ids.size() % idsPerElement);
}

/// The places of an element's ids, ascending by id.
template <std::size_t N>
Element<N> placesByAscendingId(std::span<const unsigned int, N> ids)
{
    Element<N> places{};
    for (unsigned int k = 0; k < N; ++k)
        places[k] = k;
    std::sort(places.begin(), places.end(), [&](unsigned int a, unsigned int b) {
        return ids[a] < ids[b] || (ids[a] == ids[b] && a < b);
    });
    return places;
}

template <std::size_t N>
Element<N> ascending(std::span<const unsigned int, N> ids)
{
    Element<N> result{};
    std::copy(ids.begin(), ids.end(), result.begin());
    std::sort(result.begin(), result.end());
    return result;
}

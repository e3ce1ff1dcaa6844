#pragma once

#include "UVUtils/model/Buckets.h"
#include "UVUtils/model/Edge.h"
#include "UVUtils/model/SortFew.h"

#include <algorithm>
#include <cstddef>
#include <span>

/// An occurrence of an edge in a list.
struct EdgePlace
{
    unsigned int higher; ///< the higher id of the edge
    unsigned int place;  ///< in the list
    friend auto operator<=>(const EdgePlace&, const EdgePlace&) = default;
};

/// Calls `visit` with each different edge of a list, ascending, and its occurrences, in the order
/// of the list.
///
/// idEnd      above all lower ids
/// visitList  calls its argument with (edge, place) for each edge of the list; runs twice and must
///            say the same both times
/// visit      takes (const Edge&, std::span<const EdgePlace>)
///
/// Linear in occurrences plus ids, but for the sorting of the edges at one vertex.
template <class VisitList, class Visit>
void forEachEdge(std::size_t idEnd, const VisitList& visitList, const Visit& visit)
{
    Buckets<EdgePlace> buckets(idEnd, [&](const auto& add) {
        visitList([&](const Edge& edge, unsigned int place) {
            add(edge.first, EdgePlace{edge.second, place});
        });
    });
    for (std::size_t lower = 0; lower < buckets.size(); ++lower) {
        const std::span<EdgePlace> places = buckets[lower];
        sortFew(places);
        for (std::size_t begin = 0, end = 0; begin < places.size(); begin = end) {
            while (end < places.size() && places[end].higher == places[begin].higher)
                ++end;
            visit(Edge(static_cast<unsigned int>(lower), places[begin].higher),
                  std::span<const EdgePlace>(places.subspan(begin, end - begin)));
        }
    }
}

/// The edges of triangles as such a list: side 3 * t + k goes from corner k of triangle t to the
/// next one. `add` takes (edge, side).
template <class Add>
void visitSides(std::span<const unsigned int> triangles, const Add& add)
{
    const auto end = static_cast<unsigned int>(triangles.size() / 3 * 3);
    for (unsigned int first = 0; first < end; first += 3) {
        const std::span corners = triangles.subspan(first, 3);
        add(Edge(corners[0], corners[1]), first);
        add(Edge(corners[1], corners[2]), first + 1);
        add(Edge(corners[2], corners[0]), first + 2);
    }
}

/// One more than the highest of some ids; 0 without any.
inline std::size_t endOfIds(std::span<const unsigned int> ids)
{
    return ids.empty() ? 0 : std::size_t{*std::max_element(ids.begin(), ids.end())} + 1;
}

#include "UVUtils/model/EdgeNumbers.h"

#include "UVUtils/model/Buckets.h"
#include "UVUtils/model/SortFew.h"

#include <algorithm>
#include <cstdint>

namespace
{

/// The higher id of an edge, and the edge's place in the list.
struct Entry
{
    unsigned int higher;
    unsigned int place;
    friend auto operator<=>(const Entry&, const Entry&) = default;
};

Buckets<Entry> entriesByLower(std::span<const Edge> edges)
{
    std::size_t idCount = 0;
    for (const Edge& edge : edges)
        idCount = std::max(idCount, std::size_t{edge.first} + 1);
    return {idCount, [&](const auto& add) {
                for (unsigned int place = 0; place < edges.size(); ++place)
                    add(edges[place].first, Entry{edges[place].second, place});
            }};
}

} // namespace

EdgeNumbers numberEdges(std::span<const Edge> edges)
{
    EdgeNumbers numbers;
    numbers.numberOf.resize(edges.size());
    Buckets<Entry> buckets = entriesByLower(edges);
    for (std::size_t lower = 0; lower < buckets.size(); ++lower) {
        const std::span<Entry> entries = buckets[lower];
        sortFew(entries);
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (i == 0 || entries[i].higher != entries[i - 1].higher)
                ++numbers.count;
            numbers.numberOf[entries[i].place] = numbers.count - 1;
        }
    }
    return numbers;
}

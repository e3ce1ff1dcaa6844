#include "UVUtils/model/EdgeNumbers.h"

#include "UVUtils/model/EdgeRuns.h"

#include <algorithm>

EdgeNumbers numberEdges(std::span<const Edge> edges)
{
    std::size_t idEnd = 0;
    for (const Edge& edge : edges)
        idEnd = std::max(idEnd, std::size_t{edge.first} + 1);
    const auto visitEdges = [edges](const auto& add) {
        for (unsigned int place = 0; place < edges.size(); ++place)
            add(edges[place], place);
    };
    EdgeNumbers numbers;
    numbers.numberOf.resize(edges.size());
    forEachEdge(idEnd, visitEdges, [&](const Edge&, std::span<const EdgePlace> places) {
        for (const EdgePlace& place : places)
            numbers.numberOf[place.place] = numbers.count;
        ++numbers.count;
    });
    return numbers;
}

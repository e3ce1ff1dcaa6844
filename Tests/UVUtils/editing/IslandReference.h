#pragma once

#include "OpenSG/TinyGeometry.h"

#include <algorithm>

/// The plainest way there is: each triangle spreads its number until nothing changes, then numbers
/// are given in the order in which they stand.
inline tiny::Ids islandsBySpreading(const tiny::Ids& triangles, unsigned int vertexCount)
{
    constexpr unsigned int none = 0xFFFFFFFFU;
    tiny::Ids lowest(vertexCount, none);
    const auto whole = static_cast<unsigned int>(triangles.size() / 3);
    for (bool changed = true; changed;) {
        changed = false;
        for (unsigned int t = 0; t < whole; ++t) {
            unsigned int label = t;
            for (unsigned int k = 0; k < 3; ++k)
                label = std::min(label, lowest[triangles[3 * t + k]]);
            for (unsigned int k = 0; k < 3; ++k) {
                unsigned int& own = lowest[triangles[3 * t + k]];
                changed = changed || own != label;
                own = label;
            }
        }
    }
    tiny::Ids numberOf(whole, none);
    unsigned int count = 0;
    for (unsigned int t = 0; t < whole; ++t) {
        unsigned int& number = numberOf[lowest[triangles[3 * t]]];
        if (number == none)
            number = count++;
    }
    for (unsigned int& label : lowest)
        label = label == none ? none : numberOf[label];
    return lowest;
}

/// The vertices of each island, ascending.
inline std::vector<tiny::Ids> verticesBySpreading(const tiny::Ids& triangles,
                                                  unsigned int vertexCount)
{
    std::vector<tiny::Ids> islands;
    const tiny::Ids islandOfVertex = islandsBySpreading(triangles, vertexCount);
    for (unsigned int vertex = 0; vertex < vertexCount; ++vertex) {
        const std::size_t island = islandOfVertex[vertex];
        if (island == 0xFFFFFFFFU)
            continue;
        islands.resize(std::max(islands.size(), island + 1));
        islands[island].push_back(vertex);
    }
    return islands;
}

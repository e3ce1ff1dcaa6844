#include "UVUtils/editing/kyUVSelection.h"

#include <algorithm>
#include <cstddef>
#include <span>

std::vector<unsigned int>
kyUVSelection::getIslandsSeeds(const std::vector<unsigned int>& islandVertCounts,
                               const std::vector<unsigned int>& islandVerts)
{
    constexpr unsigned int absent = 0xFFFFFFFFU;
    std::vector<unsigned int> seeds;
    seeds.reserve(islandVertCounts.size());
    std::span<const unsigned int> rest(islandVerts);
    for (const unsigned int count : islandVertCounts) {
        const auto island = rest.first(std::min<std::size_t>(count, rest.size()));
        rest = rest.subspan(island.size());
        seeds.push_back(island.empty() ? absent : *std::min_element(island.begin(), island.end()));
    }
    return seeds;
}

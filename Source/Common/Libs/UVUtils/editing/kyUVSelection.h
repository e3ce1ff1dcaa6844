#pragma once

#include <vector>

/// Island selections.
class kyUVSelection
{
public:
    kyUVSelection() = delete;

    /// The seed of each island, which is its lowest vertex id.
    ///
    /// islandVertCounts  [island]  how many entries of islandVerts it has
    /// islandVerts       the vertices of the islands, one island after the other
    ///
    /// Returns [island]; 0xFFFFFFFF for an island without vertices. Linear.
    static std::vector<unsigned int>
    getIslandsSeeds(const std::vector<unsigned int>& islandVertCounts,
                    const std::vector<unsigned int>& islandVerts);
};

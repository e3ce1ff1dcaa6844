#include "UVUtils/editing/Representatives.h"

#include <set>

std::vector<unsigned int> findRepresentatives(const BorderVertices& vertices,
                                              const SewVertexLess& isLess)
{
    const auto isPlaceLess = [&](unsigned int a, unsigned int b) {
        return isLess(vertices.idAt(a), vertices.idAt(b));
    };
    std::set<unsigned int, decltype(isPlaceLess)> found(isPlaceLess);
    std::vector<unsigned int> representatives(vertices.size());
    for (unsigned int place = 0; place < vertices.size(); ++place)
        representatives[place] = *found.insert(place).first;
    return representatives;
}

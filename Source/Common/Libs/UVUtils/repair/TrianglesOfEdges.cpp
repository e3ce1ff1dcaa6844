#include "UVUtils/repair/TrianglesOfEdges.h"

#include "UVUtils/model/EdgeNumbers.h"

#include <utility>

namespace
{

std::vector<Edge> sidesOf(std::span<const unsigned int> triangles)
{
    std::vector<Edge> sides;
    sides.reserve(triangles.size());
    for (std::size_t i = 0; i + 3 <= triangles.size(); i += 3) {
        sides.emplace_back(triangles[i], triangles[i + 1]);
        sides.emplace_back(triangles[i + 1], triangles[i + 2]);
        sides.emplace_back(triangles[i + 2], triangles[i]);
    }
    return sides;
}

} // namespace

TrianglesOfEdges collectTrianglesOfEdges(std::span<const unsigned int> triangles)
{
    const std::vector<Edge> sides = sidesOf(triangles);
    EdgeNumbers numbers = numberEdges(sides);
    TrianglesOfEdges table;
    table.edgeOfSide = std::move(numbers.numberOf);
    table.edges.resize(numbers.count);
    // A counting sort: the offsets stand one entry late while places fill up.
    table.offsets.resize(std::size_t{numbers.count} + 2);
    for (std::size_t side = 0; side < sides.size(); ++side) {
        table.edges[table.edgeOfSide[side]] = sides[side];
        ++table.offsets[table.edgeOfSide[side] + 2];
    }
    for (std::size_t i = 2; i < table.offsets.size(); ++i)
        table.offsets[i] += table.offsets[i - 1];
    table.triangles.resize(sides.size());
    for (std::size_t side = 0; side < sides.size(); ++side)
        table.triangles[table.offsets[table.edgeOfSide[side] + 1]++] =
            static_cast<unsigned int>(side / 3);
    table.offsets.pop_back();
    return table;
}

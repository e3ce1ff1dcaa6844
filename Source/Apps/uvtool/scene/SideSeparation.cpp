#include "scene/SideSeparation.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace uvtool
{
namespace
{

/// UVs nearer than this are not sure to be told apart: the library takes those within 1.2e-7 for
/// one, and files may turn v.
constexpr float leastDistance = 1e-6F;

/// The library's own step; larger where UVs are so large that it would be lost.
float stepAt(const Vec2f& uv)
{
    const float largest = std::max(std::abs(uv[0]), std::abs(uv[1]));
    return std::max(1.1920929e-5F, 4 * largest * std::numeric_limits<float>::epsilon());
}

bool areOne(const Vec2f& a, const Vec2f& b)
{
    return std::abs(a[0] - b[0]) < leastDistance && std::abs(a[1] - b[1]) < leastDistance;
}

struct Side
{
    std::uint32_t vertexBefore;
    std::uint32_t vertexAfter;
    Vec2f uv;
    bool isMoved = false;
};

/// One for each vertex after, those of one vertex before side by side.
std::vector<Side> sidesOf(std::span<const std::uint32_t> verticesBefore,
                          std::span<const std::uint32_t> verticesAfter,
                          const std::vector<Vec2f>& uvs)
{
    std::vector<Side> sides;
    std::vector<char> isKnown;
    for (std::size_t i = 0; i < uvs.size(); ++i) {
        const std::uint32_t vertex = verticesAfter[i];
        if (vertex >= isKnown.size())
            isKnown.resize(std::size_t{vertex} + 1, 0);
        if (isKnown[vertex] != 0)
            continue;
        isKnown[vertex] = 1;
        sides.push_back({verticesBefore[i], vertex, uvs[i]});
    }
    std::stable_sort(sides.begin(), sides.end(),
                     [](const Side& a, const Side& b) { return a.vertexBefore < b.vertexBefore; });
    return sides;
}

/// Moves a side until it is one with none of those before it, which stay.
void moveFrom(std::span<const Side> others, Side& side)
{
    const auto isOneWithSide = [&side](const Side& other) { return areOne(other.uv, side.uv); };
    while (std::any_of(others.begin(), others.end(), isOneWithSide)) {
        side.uv[0] += stepAt(side.uv);
        side.isMoved = true;
    }
}

void separateAtVertex(std::span<Side> sides)
{
    for (std::size_t i = 1; i < sides.size(); ++i)
        moveFrom(sides.first(i), sides[i]);
}

} // namespace

void separateSides(std::span<const std::uint32_t> verticesBefore,
                   std::span<const std::uint32_t> verticesAfter, std::vector<Vec2f>& uvs)
{
    std::vector<Side> sides = sidesOf(verticesBefore, verticesAfter, uvs);
    for (auto first = sides.begin(); first != sides.end();) {
        const auto end = std::find_if(first, sides.end(), [&first](const Side& side) {
            return side.vertexBefore != first->vertexBefore;
        });
        separateAtVertex(std::span(first, end));
        first = end;
    }
    std::vector<const Side*> movedTo;
    for (const Side& side : sides) {
        if (!side.isMoved)
            continue;
        movedTo.resize(std::max(movedTo.size(), std::size_t{side.vertexAfter} + 1), nullptr);
        movedTo[side.vertexAfter] = &side;
    }
    for (std::size_t i = 0; i < uvs.size(); ++i)
        if (verticesAfter[i] < movedTo.size() && movedTo[verticesAfter[i]] != nullptr)
            uvs[i] = movedTo[verticesAfter[i]]->uv;
}

} // namespace uvtool

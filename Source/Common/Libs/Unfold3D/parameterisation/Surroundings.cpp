#include "Unfold3D/parameterisation/Surroundings.h"

#include <algorithm>
#include <cstddef>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

bool touches(const Triangle& triangle, std::span<const char> isMarked)
{
    return std::any_of(triangle.begin(), triangle.end(),
                       [&](int v) { return isMarked[at(v)] != 0; });
}

} // namespace

std::vector<char> verticesAround(const MovablePart& part, std::span<const int> centres, int rings)
{
    std::vector<char> isNear(part.mesh.positions.size(), 0);
    for (const int v : centres)
        isNear[at(v)] = 1;
    for (int ring = 0; ring < rings; ++ring) {
        std::vector<char> next = isNear;
        for (const Triangle& triangle : part.corners)
            if (touches(triangle, isNear))
                for (const int v : triangle)
                    next[at(v)] = 1;
        isNear.swap(next);
    }
    for (std::size_t v = 0; v < part.isFixed.size(); ++v)
        if (part.isFixed[v])
            isNear[v] = 0;
    return isNear;
}

Surroundings takeSurroundings(const MovablePart& part, std::span<const char> isMarked)
{
    Surroundings taken;
    std::vector<int> newOfOld(isMarked.size(), -1);
    for (const Triangle& triangle : part.corners)
        if (touches(triangle, isMarked)) {
            taken.mesh.triangles.push_back(triangle);
            for (const int v : triangle)
                newOfOld[at(v)] = 0;
        }
    for (std::size_t v = 0; v < newOfOld.size(); ++v) {
        if (newOfOld[v] < 0)
            continue;
        newOfOld[v] = static_cast<int>(taken.vertices.size());
        taken.vertices.push_back(static_cast<int>(v));
        taken.mesh.positions.push_back(part.mesh.positions[v]);
        taken.isFixed.push_back(isMarked[v] ? 0 : 1);
    }
    for (Triangle& triangle : taken.mesh.triangles)
        for (int& v : triangle)
            v = newOfOld[at(v)];
    return taken;
}

} // namespace unfold3d

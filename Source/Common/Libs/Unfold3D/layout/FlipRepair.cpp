#include "Unfold3D/layout/FlipRepair.h"

#include <algorithm>

namespace unfold3d
{

namespace
{

/// Rounds of moves; every few rounds the strides become longer.
constexpr int maxRounds = 48;
constexpr int roundsPerStride = 4;

void sortUnique(std::vector<int>& list)
{
    std::sort(list.begin(), list.end());
    list.erase(std::unique(list.begin(), list.end()), list.end());
}

std::vector<int> cornersOf(std::span<const Triangle> triangles, const std::vector<int>& some)
{
    std::vector<int> vertices;
    for (const int t : some) {
        const Triangle& corners = triangles[static_cast<std::size_t>(t)];
        vertices.insert(vertices.end(), corners.begin(), corners.end());
    }
    sortUnique(vertices);
    return vertices;
}

} // namespace

void repairFlips(std::span<const Triangle> triangles, VertexStars& stars, std::vector<int> flipped)
{
    for (int round = 0; round < maxRounds && !flipped.empty(); ++round) {
        const double stride = std::ldexp(stars.step(), round / roundsPerStride);
        std::vector<int> doubtful = flipped;
        for (const int v : cornersOf(triangles, flipped))
            if (stars.moveToBest(v, stride, [&] { return stars.safetyAt(v); }))
                for (const int corner : stars.cornersOf(v))
                    doubtful.push_back(corner / 3);
        sortUnique(doubtful);
        flipped = std::move(doubtful);
        std::erase_if(flipped, [&](int t) { return stars.isSound(t); });
    }
}

} // namespace unfold3d

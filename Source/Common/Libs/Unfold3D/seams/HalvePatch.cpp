#include "Unfold3D/seams/HalvePatch.h"

#include "Unfold3D/seams/CheapestPaths.h"
#include "Unfold3D/seams/Patches.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <utility>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Distances over the triangles of a patch, from middle to middle, by places in the list.
class Distances
{
public:
    Distances(const SeamMesh& mesh, std::span<const int> patch, std::span<const char> isSeam)
        : mesh_(mesh), patch_(patch.begin(), patch.end()), isSeam_(isSeam)
    {
        std::sort(patch_.begin(), patch_.end());
    }

    int triangle(int place) const { return patch_[at(place)]; }
    int placeOf(int triangle) const
    {
        return static_cast<int>(std::lower_bound(patch_.begin(), patch_.end(), triangle) -
                                patch_.begin());
    }

    std::vector<PathCost> from(int source) const
    {
        std::vector<PathCost> distance(patch_.size(), unreached);
        using Visit = std::pair<PathCost, int>;
        std::priority_queue<Visit, std::vector<Visit>, std::greater<>> queue;
        distance[at(source)] = 0;
        queue.emplace(0, source);
        while (!queue.empty()) {
            const auto [cost, place] = queue.top();
            queue.pop();
            if (cost > distance[at(place)])
                continue;
            const int t = triangle(place);
            for (int h = 3 * t; h < 3 * t + 3; ++h) {
                if (endsPatch(mesh_, isSeam_, h))
                    continue;
                const int next = mesh_.twin[at(h)] / 3;
                const PathCost there = cost + toPathCost(length(middleOf(next) - middleOf(t)));
                PathCost& known = distance[at(placeOf(next))];
                if (there < known) {
                    known = there;
                    queue.emplace(there, placeOf(next));
                }
            }
        }
        return distance;
    }

private:
    Vec3 middleOf(int t) const
    {
        const auto& [a, b, c] = mesh_.triangles[at(t)];
        return (1.0 / 3.0) *
               (mesh_.positions[at(a)] + mesh_.positions[at(b)] + mesh_.positions[at(c)]);
    }

    const SeamMesh& mesh_;
    std::vector<int> patch_;
    std::span<const char> isSeam_;
};

int farthest(const std::vector<PathCost>& distances)
{
    return static_cast<int>(std::max_element(distances.begin(), distances.end()) -
                            distances.begin());
}

} // namespace

void halvePatch(const SeamMesh& mesh, std::span<const int> patch, std::vector<char>& isSeam)
{
    const Distances distances(mesh, patch, isSeam);
    const int oneEnd = farthest(distances.from(0));
    const std::vector<PathCost> fromOne = distances.from(oneEnd);
    const std::vector<PathCost> fromOther = distances.from(farthest(fromOne));
    const auto isNearOne = [&](int place) { return fromOne[at(place)] < fromOther[at(place)]; };
    std::vector<int> cuts;
    for (std::size_t i = 0; i < patch.size(); ++i) {
        const int t = distances.triangle(static_cast<int>(i));
        for (int h = 3 * t; h < 3 * t + 3; ++h)
            if (!endsPatch(mesh, isSeam, h) &&
                isNearOne(static_cast<int>(i)) !=
                    isNearOne(distances.placeOf(mesh.twin[at(h)] / 3)))
                cuts.push_back(mesh.edgeOf[at(h)]);
    }
    for (const int edge : cuts)
        isSeam[at(edge)] = 1;
}

} // namespace unfold3d

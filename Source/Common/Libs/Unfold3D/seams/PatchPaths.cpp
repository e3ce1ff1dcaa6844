#include "Unfold3D/seams/PatchPaths.h"

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

} // namespace

PatchPaths::PatchPaths(const SeamMesh& mesh, const PatchSurface& patch,
                       std::span<const int> triangles, std::span<const PathCost> costs,
                       std::span<const char> isSeam)
    : costs_(costs), steps_(patch.vertices.size()), isOnBorder_(patch.vertices.size(), 0)
{
    for (std::size_t k = 0; k < triangles.size(); ++k)
        for (std::size_t i = 0; i < 3; ++i) {
            const int h = 3 * triangles[k] + static_cast<int>(i);
            const int a = patch.mesh.triangles[k][i];
            const int b = patch.mesh.triangles[k][(i + 1) % 3];
            if (endsPatch(mesh, isSeam, h))
                isOnBorder_[at(a)] = isOnBorder_[at(b)] = 1;
            else
                steps_[at(a)].push_back({b, mesh.edgeOf[at(h)]});
        }
}

std::vector<int> PatchPaths::wayTo(std::span<const int> sources, std::span<const char> isGoal,
                                   const RunControl& control, int& end) const
{
    using Visit = std::pair<PathCost, int>;
    std::priority_queue<Visit, std::vector<Visit>, std::greater<>> queue;
    std::vector<PathCost> cost(steps_.size(), unreached);
    std::vector<Step> from(steps_.size(), {-1, -1});
    for (const int v : sources) {
        cost[at(v)] = 0;
        queue.emplace(0, v);
    }
    end = -1;
    constexpr std::size_t visitsPerCheckpoint = 1024;
    std::size_t visits = 0;
    while (!queue.empty() && end < 0) {
        const auto [costHere, v] = queue.top();
        queue.pop();
        if (costHere > cost[at(v)])
            continue;
        if (++visits % visitsPerCheckpoint == 0)
            control.checkpoint();
        const bool isSource = from[at(v)].edge < 0;
        if (!isSource && isGoal[at(v)])
            end = v;
        if (!isSource && isOnBorder(v))
            continue;
        for (const Step& step : steps_[at(v)]) {
            const PathCost costThere = costHere + costs_[at(step.edge)];
            if (costThere >= cost[at(step.vertex)])
                continue;
            cost[at(step.vertex)] = costThere;
            from[at(step.vertex)] = {v, step.edge};
            queue.emplace(costThere, step.vertex);
        }
    }
    std::vector<int> edges;
    for (int v = end; v >= 0 && from[at(v)].edge >= 0; v = from[at(v)].vertex)
        edges.push_back(from[at(v)].edge);
    return edges;
}

} // namespace unfold3d

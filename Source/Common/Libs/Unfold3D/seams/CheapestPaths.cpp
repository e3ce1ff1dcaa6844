#include "Unfold3D/seams/CheapestPaths.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <queue>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Costs are counted in these parts of the size, and larger ones with so many binary digits:
/// positions that went through floats are off by 1e-7 of the size, and edges of one length
/// shall cost the same all the same.
constexpr double costsPerDiagonal = 131072.0;
constexpr int digits = 12;
constexpr double mostCost = 1e12;

struct Visit
{
    PathCost cost;
    int vertex;
    friend bool operator>(const Visit& a, const Visit& b)
    {
        return a.cost != b.cost ? a.cost > b.cost : a.vertex > b.vertex;
    }
};

} // namespace

PathCost toPathCost(double cost)
{
    const double scaled = costsPerDiagonal * cost;
    if (!(scaled > 1.0))
        return 1;
    int exponent = 0;
    const double mantissa = std::frexp(std::min(scaled, mostCost), &exponent);
    const int kept = std::min(exponent, digits);
    return static_cast<PathCost>(
        std::ldexp(std::round(std::ldexp(mantissa, kept)), exponent - kept));
}

CheapestPaths::CheapestPaths(const SeamMesh& mesh, std::span<const PathCost> costs,
                             std::span<const char> isWall)
    : mesh_(mesh), costs_(costs), isWall_(isWall), isEnd_(mesh.isOnBorder),
      arrivals_(mesh.positions.size())
{
    for (int e = 0; e < mesh.edgeCount(); ++e)
        if (isWall[at(e)])
            for (const int v : mesh.verticesOf(e))
                isEnd_[at(v)] = 1;
}

void CheapestPaths::refreshEnds(std::span<const int> triangles)
{
    for (const int t : triangles)
        for (const int v : mesh_.triangles[at(t)])
            isEnd_[at(v)] = mesh_.isOnBorder[at(v)];
    for (const int t : triangles)
        for (int h = 3 * t; h < 3 * t + 3; ++h) {
            const int edge = mesh_.edgeOf[at(h)];
            if (edge >= 0 && isWall_[at(edge)])
                isEnd_[at(mesh_.originOf(h))] = isEnd_[at(mesh_.targetOf(h))] = 1;
        }
}

void CheapestPaths::clear()
{
    for (const int v : touched_)
        arrivals_[at(v)] = {};
    touched_.clear();
    reached_.clear();
}

void CheapestPaths::search(std::span<const int> sources, const RunControl& control, PathCost limit)
{
    run(sources, {}, limit, control);
}

int CheapestPaths::searchNearest(std::span<const int> sources, std::span<const char> isGoal,
                                 const RunControl& control, PathCost limit)
{
    return run(sources, isGoal, limit, control);
}

int CheapestPaths::run(std::span<const int> sources, std::span<const char> isGoal, PathCost limit,
                       const RunControl& control)
{
    clear();
    std::priority_queue<Visit, std::vector<Visit>, std::greater<>> queue;
    for (const int v : sources)
        if (arrivals_[at(v)].cost != 0) {
            arrivals_[at(v)].cost = 0;
            touched_.push_back(v);
            queue.push({0, v});
        }
    constexpr std::size_t visitsPerCheckpoint = 1024;
    while (!queue.empty()) {
        const auto [cost, v] = queue.top();
        queue.pop();
        Arrival& here = arrivals_[at(v)];
        if (here.isDone)
            continue;
        if (cost > limit)
            break;
        here.isDone = true;
        reached_.push_back(v);
        if (reached_.size() % visitsPerCheckpoint == 0)
            control.checkpoint();
        const bool isSource = here.edge < 0;
        if (!isSource && !isGoal.empty() && isGoal[at(v)])
            return v;
        if (!isSource && isEnd_[at(v)])
            continue;
        for (const auto& [edge, next] : mesh_.spokes[v]) {
            Arrival& there = arrivals_[at(next)];
            if (there.isDone || isWall_[at(edge)])
                continue;
            if (isSource && !region_.empty() && !region_[at(mesh_.trianglesOf(edge)[0])])
                continue;
            const PathCost costThere = cost + costs_[at(edge)];
            if (costThere > there.cost || (costThere == there.cost && edge >= there.edge))
                continue;
            if (there.cost == unreached)
                touched_.push_back(next);
            const bool isQueued = costThere == there.cost;
            there.cost = costThere;
            there.edge = edge;
            if (!isQueued)
                queue.push({costThere, next});
        }
    }
    return -1;
}

int CheapestPaths::previousOf(int vertex) const
{
    const auto [a, b] = mesh_.verticesOf(edgeTo(vertex));
    return a == vertex ? b : a;
}

std::vector<int> CheapestPaths::pathTo(int vertex) const
{
    std::vector<int> path;
    for (int v = vertex; edgeTo(v) >= 0; v = previousOf(v))
        path.push_back(edgeTo(v));
    return path;
}

} // namespace unfold3d

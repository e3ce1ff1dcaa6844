#include "Unfold3D/seams/CheapestRing.h"

#include "Unfold3D/seams/SleeveLine.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <set>
#include <utility>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// A vertex of the sleeve on one of two sheets: a way changes sheets where it crosses the line.
struct Place
{
    int vertex; ///< number within the sleeve
    int sheet;
};

class RingFinder
{
public:
    RingFinder(const SeamMesh& mesh, std::span<const PathCost> costs, std::span<const int> vertices,
               const RunControl& control)
        : mesh_(mesh), costs_(costs), sleeve_(vertices), control_(control), line_(mesh_, sleeve_),
          cost_(2 * vertices.size()), edgeTo_(2 * vertices.size()), comesFrom_(2 * vertices.size())
    {}

    std::vector<int> cheapestRing(std::span<const int> from, std::span<const int> to)
    {
        line_.lay(cheapestLine(from, to));
        std::vector<int> best;
        PathCost bestCost = unreached;
        for (const int v : line_.vertices()) {
            control_.checkpoint();
            const PathCost cost = search({v, 0}, {v, 1}, bestCost);
            if (cost < bestCost) {
                bestCost = cost;
                best = wayTo({v, 1});
            }
        }
        return best;
    }

private:
    static std::size_t slot(Place p) { return 2 * at(p.vertex) + at(p.sheet); }

    /// The cheapest way from one end of the sleeve to the other, by the numbers of its vertices.
    std::vector<int> cheapestLine(std::span<const int> from, std::span<const int> to)
    {
        const std::set<int> goals(to.begin(), to.end());
        reset();
        for (const int v : from)
            push({sleeve_.numberOf(v), 0}, 0, -1, -1);
        std::vector<int> line;
        while (!queue_.empty()) {
            const auto [cost, s] = pop();
            if (cost > cost_[s])
                continue;
            if (!goals.contains(sleeve_.vertices[s / 2])) {
                spread({static_cast<int>(s / 2), 0}, unreached);
                continue;
            }
            for (int on = static_cast<int>(s); on >= 0; on = comesFrom_[at(on)])
                line.push_back(on / 2);
            break;
        }
        return line.size() < 2 ? std::vector<int>() : line;
    }

    PathCost search(Place from, Place to, PathCost limit)
    {
        reset();
        push(from, 0, -1, -1);
        while (!queue_.empty()) {
            const auto [cost, s] = pop();
            if (cost > cost_[s])
                continue;
            if (s == slot(to))
                return cost;
            spread({static_cast<int>(s / 2), static_cast<int>(s % 2)}, limit);
        }
        return unreached;
    }

    void spread(Place place, PathCost limit)
    {
        const PathCost cost = cost_[slot(place)];
        for (const Spoke& spoke : mesh_.spokes[sleeve_.vertices[at(place.vertex)]]) {
            const int to = sleeve_.numberOf(spoke.vertex);
            const PathCost costThere = cost + costs_[at(spoke.edge)];
            if (to < 0 || costThere >= limit)
                continue;
            const int sheet = place.sheet + line_.crossing(place.vertex, spoke.edge, to);
            if (sheet == 0 || sheet == 1)
                push({to, sheet}, costThere, spoke.edge, static_cast<int>(slot(place)));
        }
    }

    std::vector<int> wayTo(Place place) const
    {
        std::vector<int> edges;
        for (std::size_t s = slot(place); edgeTo_[s] >= 0; s = at(comesFrom_[s]))
            edges.push_back(edgeTo_[s]);
        return edges;
    }

    void reset()
    {
        std::fill(cost_.begin(), cost_.end(), unreached);
        queue_ = {};
    }

    void push(Place place, PathCost cost, int edge, int from)
    {
        const std::size_t s = slot(place);
        if (cost >= cost_[s])
            return;
        cost_[s] = cost;
        edgeTo_[s] = edge;
        comesFrom_[s] = from;
        queue_.emplace(cost, s);
    }

    std::pair<PathCost, std::size_t> pop()
    {
        const auto top = queue_.top();
        queue_.pop();
        return top;
    }

    using Visit = std::pair<PathCost, std::size_t>;

    const SeamMesh& mesh_;
    std::span<const PathCost> costs_;
    const VertexSet sleeve_;
    const RunControl& control_;
    SleeveLine line_;
    std::vector<PathCost> cost_; ///< [slot]
    std::vector<int> edgeTo_;
    std::vector<int> comesFrom_;
    std::priority_queue<Visit, std::vector<Visit>, std::greater<>> queue_;
};

} // namespace

std::vector<int> cheapestRing(const SeamMesh& mesh, std::span<const PathCost> costs,
                              std::span<const int> vertices, std::span<const int> from,
                              std::span<const int> to, const RunControl& control)
{
    return RingFinder(mesh, costs, vertices, control).cheapestRing(from, to);
}

} // namespace unfold3d

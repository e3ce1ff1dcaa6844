#include "Unfold3D/seams/CheapestRing.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <unordered_map>
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

class Sleeve
{
public:
    Sleeve(const SeamMesh& mesh, std::span<const PathCost> costs, std::span<const int> vertices,
           const RunControl& control)
        : mesh_(mesh), costs_(costs), vertices_(vertices), control_(control)
    {
        for (std::size_t i = 0; i < vertices.size(); ++i)
            numberOf_[vertices[i]] = static_cast<int>(i);
        cost_.resize(2 * vertices.size());
        edgeTo_.resize(2 * vertices.size());
        comesFrom_.resize(2 * vertices.size());
        lineIndex_.assign(vertices.size(), -1);
    }

    std::vector<int> cheapestRing(std::span<const int> from, std::span<const int> to)
    {
        drawLine(from, to);
        std::vector<int> best;
        PathCost bestCost = unreached;
        for (const int v : line_) {
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
    int numberOf(int vertex) const
    {
        const auto found = numberOf_.find(vertex);
        return found == numberOf_.end() ? -1 : found->second;
    }

    static std::size_t slot(Place p) { return 2 * at(p.vertex) + at(p.sheet); }

    /// The cheapest way from one end of the sleeve to the other.
    void drawLine(std::span<const int> from, std::span<const int> to)
    {
        isGoal_.assign(vertices_.size(), 0);
        for (const int v : to)
            isGoal_[at(numberOf(v))] = 1;
        reset();
        for (const int v : from)
            push({numberOf(v), 0}, 0, -1, -1);
        Place end{-1, 0};
        while (!queue_.empty() && end.vertex < 0) {
            const auto [cost, s] = pop();
            const Place place{static_cast<int>(s / 2), 0};
            if (cost > cost_[s])
                continue;
            if (isGoal_[s / 2])
                end = place;
            else
                spread(place, unreached);
        }
        if (end.vertex < 0)
            return;
        for (int s = static_cast<int>(slot(end)); s >= 0; s = comesFrom_[at(s)])
            line_.push_back(s / 2);
        if (line_.size() < 2)
            line_.clear();
        for (std::size_t i = 0; i < line_.size(); ++i)
            lineIndex_[at(line_[i])] = static_cast<int>(i);
    }

    /// Which sheet a way comes to that goes from one vertex to another, or -1 for none.
    int sheetAcross(Place from, int edge, int to) const
    {
        if (line_.empty())
            return from.sheet;
        const bool leaves = lineIndex_[at(from.vertex)] >= 0 && lineIndex_[at(to)] < 0;
        const bool comes = lineIndex_[at(from.vertex)] < 0 && lineIndex_[at(to)] >= 0;
        if (leaves && isLeftOfLine(from.vertex, edge))
            return from.sheet == 0 ? 1 : -1;
        if (comes && isLeftOfLine(to, edge))
            return from.sheet == 1 ? 0 : -1;
        return from.sheet;
    }

    /// Whether an edge at a vertex of the line goes off to its left: between the next vertex of the
    /// line and the one before, counter-clockwise.
    bool isLeftOfLine(int vertex, int edge) const
    {
        const int i = lineIndex_[at(vertex)];
        const int last = static_cast<int>(line_.size()) - 1;
        const int next = i < last ? vertices_[at(line_[at(i + 1)])] : -1;
        const int previous = i > 0 ? vertices_[at(line_[at(i - 1)])] : -1;
        const int v = vertices_[at(vertex)];
        // Counter-clockwise from the edge: on the left the vertex before comes first, on the right
        // the next one; clockwise it is the other way round, which tells where the surface ends.
        // Beyond either end of the line the sleeve ends.
        for (const bool counterClockwise : {true, false}) {
            const Met met = firstMet(v, edge, next, previous, counterClockwise);
            if (met != Met::Nothing)
                return (met == Met::Previous) == counterClockwise;
        }
        return false;
    }

    enum class Met
    {
        Nothing,
        Next,
        Previous
    };

    Met firstMet(int v, int edge, int next, int previous, bool counterClockwise) const
    {
        const auto [h, g] = mesh_.halvesOf(edge);
        const int start = mesh_.originOf(h) == v ? h : g;
        int out = start;
        for (;;) {
            if (counterClockwise) {
                const int before = previousHalfEdge(out);
                out = mesh_.twin[at(before)];
                // The last edge of a fan has no half that leaves v.
                if (out < 0)
                    return meets(mesh_.originOf(before), next, previous);
            } else {
                const int twin = mesh_.twin[at(out)];
                if (twin < 0)
                    return Met::Nothing;
                out = nextHalfEdge(twin);
            }
            if (out == start)
                return Met::Nothing;
            const Met met = meets(mesh_.targetOf(out), next, previous);
            if (met != Met::Nothing)
                return met;
        }
    }

    Met meets(int vertex, int next, int previous) const
    {
        const bool isOutside = numberOf(vertex) < 0;
        if (vertex == next || (next < 0 && isOutside))
            return Met::Next;
        if (vertex == previous || (previous < 0 && isOutside))
            return Met::Previous;
        return Met::Nothing;
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
        for (const Spoke& spoke : mesh_.spokes[vertices_[at(place.vertex)]]) {
            const int to = numberOf(spoke.vertex);
            const PathCost costThere = cost + costs_[at(spoke.edge)];
            if (to < 0 || costThere >= limit)
                continue;
            const int sheet = sheetAcross(place, spoke.edge, to);
            if (sheet >= 0)
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
    std::span<const int> vertices_;
    const RunControl& control_;
    std::unordered_map<int, int> numberOf_;
    std::vector<int> line_;      ///< vertices of the sleeve, from its far end to the near one
    std::vector<char> isGoal_;   ///< [vertex of the sleeve] is at its far end
    std::vector<int> lineIndex_; ///< [vertex of the sleeve] place in the line, or -1
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
    return Sleeve(mesh, costs, vertices, control).cheapestRing(from, to);
}

} // namespace unfold3d

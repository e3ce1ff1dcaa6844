#include "Unfold3D/seams/StraightBorders.h"

#include "Unfold3D/seams/AngleDefects.h"
#include "Unfold3D/seams/BorderChains.h"
#include "Unfold3D/seams/MovableBorders.h"

#include <algorithm>
#include <array>
#include <cmath>
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

/// Rounds, by the number of edges that are laid anew in one go: a share of the chain, or a few, and
/// from which place on, as a share of them.
struct Round
{
    int parts;
    int partsOfLoop;
    int mostEdges;
    bool isShifted;
};
constexpr int noLimit = 1 << 30;
constexpr std::array<Round, 5> rounds{{{1, 3, noLimit, false},
                                       {4, 4, noLimit, false},
                                       {4, 4, noLimit, true},
                                       {1, 1, 8, false},
                                       {1, 1, 8, true}}};

/// A new way has to be cheaper by one of so many parts.
constexpr PathCost worthwhileParts = 50;
/// Radians that may be missing around a vertex that comes to lie inside.
constexpr double mostDefect = 0.15;
/// A part of a chain.
struct Stretch
{
    std::span<const int> vertices;
    std::span<const int> edges;
};

class BorderStraightener
{
public:
    BorderStraightener(const SeamMesh& mesh, std::span<const char> mayMove,
                       std::span<const PathCost> costs, std::vector<char>& isSeam,
                       const RunControl& control)
        : mesh_(mesh), mayMove_(mayMove), costs_(costs), isSeam_(isSeam), control_(control),
          defects_(angleDefects(mesh)), borders_(mesh, isSeam),
          distance_(mesh.positions.size(), unreached), via_(mesh.positions.size(), -1),
          isOld_(mesh.lengths.size(), 0)
    {}

    void run()
    {
        for (const Round& round : rounds) {
            std::vector<char> isWanted(isSeam_.size(), 0);
            for (int e = 0; e < mesh_.edgeCount(); ++e) {
                const auto [a, b] = borders_.patchesOf(e);
                isWanted[at(e)] = static_cast<char>(isSeam_[at(e)] && mayMove_[at(e)] && a != b);
            }
            for (const BorderChain& chain : findBorderChains(mesh_, isSeam_, isWanted)) {
                control_.checkpoint();
                straighten(chain, round);
            }
        }
    }

private:
    void straighten(const BorderChain& chain, const Round& round)
    {
        const int parts = chain.isLoop() ? round.partsOfLoop : round.parts;
        const int step = std::min(round.mostEdges, (chain.count() + parts - 1) / parts);
        for (int begin = round.isShifted ? -step / 2 : 0; begin < chain.count(); begin += step) {
            const int first = std::max(begin, 0);
            const int last = std::min(begin + step, chain.count());
            if (last - first < 2)
                continue;
            const Stretch stretch{
                std::span(chain.vertices).subspan(at(first), at(last - first + 1)),
                std::span(chain.edges).subspan(at(first), at(last - first))};
            if (stretch.vertices.front() != stretch.vertices.back())
                layAnew(stretch);
        }
    }

    void layAnew(const Stretch& old)
    {
        for (const int e : old.edges)
            isOld_[at(e)] = 1;
        std::vector<int> path = cheaperWay(old);
        if (!path.empty() && leavesOnlyFlatVertices(old, path))
            borders_.move(old.edges, path);
        for (const int e : old.edges)
            isOld_[at(e)] = 0;
    }

    // The new way.

    /// Within the two patches, away from other seams; empty when there is none (Dijkstra 1959).
    std::vector<int> cheaperWay(const Stretch& old)
    {
        PathCost most = 0;
        for (const int e : old.edges)
            most += costs_[at(e)];
        most -= std::max<PathCost>(1, most / worthwhileParts);
        using Visit = std::pair<PathCost, int>;
        std::priority_queue<Visit, std::vector<Visit>, std::greater<>> queue;
        const int goal = old.vertices.back();
        const auto patches = borders_.patchesOf(old.edges.front());
        std::vector<int> reached{old.vertices.front()};
        distance_[at(reached.front())] = 0;
        queue.emplace(0, reached.front());
        while (!queue.empty() && queue.top().second != goal) {
            const auto [cost, v] = queue.top();
            queue.pop();
            if (cost > distance_[at(v)])
                continue;
            for (const Spoke& spoke : mesh_.spokes[v]) {
                const PathCost there = cost + costs_[at(spoke.edge)];
                if (there > most || there >= distance_[at(spoke.vertex)] ||
                    !mayRunAlong(spoke, old, patches))
                    continue;
                distance_[at(spoke.vertex)] = there;
                via_[at(spoke.vertex)] = spoke.edge;
                reached.push_back(spoke.vertex);
                queue.emplace(there, spoke.vertex);
            }
        }
        std::vector<int> path;
        if (!queue.empty())
            for (int v = goal; v != old.vertices.front();) {
                path.push_back(via_[at(v)]);
                const auto [a, b] = mesh_.verticesOf(path.back());
                v = a == v ? b : a;
            }
        for (const int v : reached)
            distance_[at(v)] = unreached;
        return path;
    }

    bool mayRunAlong(const Spoke& spoke, const Stretch& old,
                     const std::array<int, 2>& patches) const
    {
        if (isOld_[at(spoke.edge)])
            return true;
        if (isSeam_[at(spoke.edge)])
            return false;
        const auto isOneOf = [&](int p) { return p == patches[0] || p == patches[1]; };
        const auto [a, b] = borders_.patchesOf(spoke.edge);
        if (!isOneOf(a) || !isOneOf(b))
            return false;
        if (spoke.vertex == old.vertices.back())
            return true;
        return !mesh_.isOnBorder[at(spoke.vertex)] &&
               (borders_.seamsAt(spoke.vertex) == 0 || isWithin(spoke.vertex, old));
    }

    /// Whether the old way passes a vertex.
    bool isWithin(int vertex, const Stretch& old) const
    {
        const auto spokes = mesh_.spokes[vertex];
        return vertex != old.vertices.front() &&
               std::count_if(spokes.begin(), spokes.end(),
                             [&](const Spoke& s) { return isOld_[at(s.edge)] != 0; }) == 2;
    }

    bool leavesOnlyFlatVertices(const Stretch& old, const std::vector<int>& path) const
    {
        std::vector<int> kept;
        for (const int e : path)
            for (const int v : mesh_.verticesOf(e))
                kept.push_back(v);
        std::sort(kept.begin(), kept.end());
        return std::all_of(old.vertices.begin(), old.vertices.end(), [&](int v) {
            return std::abs(defects_[at(v)]) <= mostDefect ||
                   std::binary_search(kept.begin(), kept.end(), v);
        });
    }

    const SeamMesh& mesh_;
    std::span<const char> mayMove_;
    std::span<const PathCost> costs_;
    std::span<const char> isSeam_;
    const RunControl& control_;
    const std::vector<double> defects_;
    MovableBorders borders_;
    std::vector<PathCost> distance_; ///< [vertex] unreached but during a search
    std::vector<int> via_;           ///< [vertex] edge by which a search came
    std::vector<char> isOld_;        ///< [edge] of the stretch that is laid anew
};

} // namespace

void straightenBorders(const SeamMesh& mesh, std::span<const char> mayMove,
                       std::span<const PathCost> costs, std::vector<char>& isSeam,
                       const RunControl& control)
{
    BorderStraightener(mesh, mayMove, costs, isSeam, control).run();
}

} // namespace unfold3d

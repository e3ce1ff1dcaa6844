#include "Unfold3D/seams/CoarseMesh.h"

#include "Unfold3D/linear/VertexGraph.h"
#include "Unfold3D/seams/ConnectionHash.h"
#include "Unfold3D/seams/EdgeCollapse.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <utility>

namespace unfold3d
{

namespace
{

/// Longest edge to make, in those of an even mesh with as many vertices as wanted.
constexpr double longestEdge = 4.0;
/// Most triangles around a vertex.
constexpr int mostValence = 9;
/// A round that takes less than this share of the vertices is the last.
constexpr double leastShare = 0.03;
constexpr int mostRounds = 60;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

double areaOf(std::span<const Vec3> positions, std::span<const Triangle> triangles)
{
    double area = 0.0;
    for (const Triangle& t : triangles)
        area += 0.5 * length(cross(positions[at(t[1])] - positions[at(t[0])],
                                   positions[at(t[2])] - positions[at(t[0])]));
    return area;
}

class Coarsening
{
public:
    Coarsening(std::span<const Vec3> positions, std::span<const Triangle> triangles,
               int vertexCount, const RunControl& control)
        : control_(control), mesh_(positions, triangles), target_(positions.size()),
          left_(positions.size()), isBusy_(positions.size(), 0), wanted_(vertexCount),
          longest_(longestEdge * std::sqrt(areaOf(positions, triangles) / vertexCount))
    {
        control.checkpoint();
        std::iota(target_.begin(), target_.end(), 0);
        std::iota(left_.begin(), left_.end(), 0);
        std::vector<char> isOnBorder(positions.size());
        for (const int v : left_)
            isOnBorder[at(v)] = static_cast<char>(mesh_.isOnBorder(v));
        hashes_ = connectionHashes(vertexGraph(triangles, static_cast<int>(positions.size())),
                                   isOnBorder);
    }

    /// Lets go of vertices that don't touch one another, round by round.
    void run()
    {
        for (int round = 0; round<mostRounds&& static_cast<int>(left_.size())> wanted_; ++round) {
            const std::size_t before = left_.size();
            takeRound();
            if (static_cast<double>(before - left_.size()) <
                leastShare * static_cast<double>(before))
                break;
        }
    }

    CoarseMesh result(std::span<const Vec3> positions)
    {
        CoarseMesh coarse;
        std::vector<int> number(target_.size(), -1);
        std::sort(left_.begin(), left_.end());
        for (const int v : left_) {
            number[at(v)] = coarse.vertexCount();
            coarse.positions.push_back(positions[at(v)]);
        }
        coarse.triangles = mesh_.triangles();
        for (Triangle& t : coarse.triangles)
            for (int& v : t)
                v = number[at(v)];
        coarse.coarseOf.reserve(target_.size());
        for (std::size_t v = 0; v < target_.size(); ++v)
            coarse.coarseOf.push_back(number[at(lastTarget(static_cast<int>(v)))]);
        coarse.vertexOf = std::move(left_);
        return coarse;
    }

private:
    void takeRound()
    {
        std::vector<std::pair<std::uint64_t, int>> order;
        order.reserve(left_.size());
        for (const int v : left_) {
            hashes_[at(v)] = scrambled(hashes_[at(v)]);
            order.emplace_back(hashes_[at(v)], v);
            isBusy_[at(v)] = 0;
        }
        control_.checkpoint();
        std::sort(order.begin(), order.end());
        std::size_t toGo = left_.size() - std::min(left_.size(), at(wanted_));
        constexpr std::size_t visitsPerCheckpoint = 1024;
        for (std::size_t i = 0; i < order.size() && toGo > 0; ++i) {
            if (i % visitsPerCheckpoint == 0)
                control_.checkpoint();
            toGo -= takeAway(order[i].second) ? 1 : 0;
        }
        std::erase_if(left_, [&](int v) { return target_[at(v)] != v; });
    }

    bool takeAway(int vertex)
    {
        if (isBusy_[at(vertex)])
            return false;
        neighbours_.clear();
        for (const int w : mesh_.neighboursOf(vertex))
            neighbours_.emplace_back(mesh_.valence(w) * (mesh_.isOnBorder(w) ? 2 : 1), w);
        std::sort(neighbours_.begin(), neighbours_.end(), [&](const auto& a, const auto& b) {
            return a.first != b.first ? a.first < b.first
                                      : std::pair(hashes_[at(a.second)], a.second) <
                                            std::pair(hashes_[at(b.second)], b.second);
        });
        for (const auto& [valence, w] : neighbours_) {
            if (valence + mesh_.valence(vertex) - 4 > mostValence)
                return false;
            if (!mesh_.canMove(vertex, w, longest_))
                continue;
            mesh_.move(vertex, w);
            target_[at(vertex)] = w;
            for (const auto& neighbour : neighbours_)
                isBusy_[at(neighbour.second)] = 1;
            return true;
        }
        return false;
    }

    int lastTarget(int vertex)
    {
        while (target_[at(vertex)] != vertex)
            vertex = target_[at(vertex)] = target_[at(target_[at(vertex)])];
        return vertex;
    }

    const RunControl& control_;
    EdgeCollapse mesh_;
    std::vector<int> target_; ///< [vertex] where it went; itself as long as it is there
    std::vector<int> left_;
    std::vector<std::uint64_t> hashes_;
    std::vector<char> isBusy_; ///< [vertex] a neighbour of it went in this round
    std::vector<std::pair<int, int>> neighbours_;
    int wanted_;
    double longest_;
};

CoarseMesh asItIs(std::span<const Vec3> positions, std::span<const Triangle> triangles)
{
    CoarseMesh same{
        {positions.begin(), positions.end()}, {triangles.begin(), triangles.end()}, {}, {}};
    same.vertexOf.resize(positions.size());
    std::iota(same.vertexOf.begin(), same.vertexOf.end(), 0);
    same.coarseOf = same.vertexOf;
    return same;
}

} // namespace

CoarseMesh coarsened(std::span<const Vec3> positions, std::span<const Triangle> triangles,
                     int vertexCount, const RunControl& control)
{
    if (static_cast<int>(positions.size()) <= vertexCount)
        return asItIs(positions, triangles);
    Coarsening coarsening(positions, triangles, vertexCount, control);
    coarsening.run();
    return coarsening.result(positions);
}

} // namespace unfold3d

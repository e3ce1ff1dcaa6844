#include "Unfold3D/seams/CanonicalOrder.h"

#include "Unfold3D/base/BinaryDigits.h"
#include "Unfold3D/base/DisjointSets.h"
#include "Unfold3D/base/OffsetArray.h"
#include "Unfold3D/linear/VertexGraph.h"
#include "Unfold3D/mesh/HalfEdges.h"
#include "Unfold3D/seams/ConnectionHash.h"

#include <algorithm>
#include <cstdint>
#include <tuple>

namespace unfold3d
{

namespace
{

/// Distances with as many binary digits in common are one.
constexpr int digits = 8;
constexpr std::size_t placesPerCheckpoint = 10'000;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// A part of the surface and where the walk over it begins. In order: large parts first.
struct Beginning
{
    int minusVertexCount;
    std::uint64_t hash;
    double minusDistance;
    int halfEdge;

    friend bool operator<(const Beginning& a, const Beginning& b)
    {
        return std::tie(a.minusVertexCount, a.hash, a.minusDistance, a.halfEdge) <
               std::tie(b.minusVertexCount, b.hash, b.minusDistance, b.halfEdge);
    }
};

class Walk
{
public:
    Walk(std::span<const Vec3> positions, std::span<const char> isOnBorder,
         std::span<const Triangle> triangles, std::span<const int> twin, const RunControl& control)
        : control_(control), positions_(positions), triangles_(triangles), twin_(twin),
          hashes_(connectionHashes(vertexGraph(triangles, static_cast<int>(positions.size())),
                                   isOnBorder)),
          isDone_(triangles.size(), 0)
    {
        order_.placeOf.assign(positions.size(), -1);
        control.checkpoint();
    }

    CanonicalOrder run()
    {
        for (const Beginning& beginning : beginnings())
            walkFrom(beginning.halfEdge);
        return std::move(order_);
    }

private:
    std::vector<Beginning> beginnings() const
    {
        const OffsetArray<int> parts = verticesOfParts();
        std::vector<int> outgoing(positions_.size(), -1);
        for (int h = 0; h < static_cast<int>(twin_.size()); ++h)
            if (isBetter(h, outgoing[at(originOf(triangles_, h))]))
                outgoing[at(originOf(triangles_, h))] = h;
        std::vector<Beginning> list;
        for (int part = 0; part < parts.size(); ++part) {
            const std::span<const int> vertices = parts[part];
            if (vertices.empty() || outgoing[at(vertices.front())] < 0)
                continue;
            const auto [vertex, distance] = rarest(vertices);
            list.push_back({-static_cast<int>(vertices.size()), hashes_[at(vertex)], -distance,
                            outgoing[at(vertex)]});
        }
        std::sort(list.begin(), list.end());
        return list;
    }

    OffsetArray<int> verticesOfParts() const
    {
        DisjointSets sets(static_cast<int>(positions_.size()));
        for (const Triangle& t : triangles_) {
            sets.join(t[0], t[1]);
            sets.join(t[0], t[2]);
        }
        std::vector<int> partOf(positions_.size());
        for (std::size_t v = 0; v < partOf.size(); ++v)
            partOf[v] = sets.find(static_cast<int>(v));
        return groupByKey(partOf, static_cast<int>(positions_.size()));
    }

    /// Whether to leave a vertex by half-edge h rather than by g, or -1.
    bool isBetter(int h, int g) const
    {
        if (g < 0)
            return true;
        const auto key = [&](int half) {
            const Vec3 along = positions_[at(targetOf(triangles_, half))] -
                               positions_[at(originOf(triangles_, half))];
            return std::pair(hashes_[at(targetOf(triangles_, half))],
                             -toBinaryDigits(length(along), digits));
        };
        return key(h) < key(g);
    }

    /// The vertex of a part whose surroundings are rarest there, and of those alike the one
    /// farthest from the middle; with its distance.
    std::pair<int, double> rarest(std::span<const int> vertices) const
    {
        std::vector<std::pair<std::uint64_t, int>> byHash;
        Vec3 middle;
        for (const int v : vertices) {
            byHash.emplace_back(hashes_[at(v)], v);
            middle = middle + (1.0 / static_cast<double>(vertices.size())) * positions_[at(v)];
        }
        std::sort(byHash.begin(), byHash.end());
        std::size_t best = 0;
        std::size_t bestCount = byHash.size() + 1;
        for (std::size_t begin = 0, end = 0; begin < byHash.size(); begin = end) {
            while (end < byHash.size() && byHash[end].first == byHash[begin].first)
                ++end;
            if (end - begin < bestCount) {
                best = begin;
                bestCount = end - begin;
            }
        }
        std::pair<int, double> farthest{-1, -1.0};
        for (std::size_t i = best; i < best + bestCount; ++i) {
            const double distance =
                toBinaryDigits(length(positions_[at(byHash[i].second)] - middle), digits);
            if (distance > farthest.second)
                farthest = {byHash[i].second, distance};
        }
        return farthest;
    }

    void walkFrom(int start)
    {
        std::vector<int> entries{start};
        isDone_[at(start / 3)] = 1;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (i % placesPerCheckpoint == 0)
                control_.checkpoint();
            const int entry = entries[i];
            order_.triangleAt.push_back(entry / 3);
            order_.firstCorner.push_back(static_cast<char>(entry % 3));
            int h = entry;
            for (int side = 0; side < 3; ++side, h = nextHalfEdge(h)) {
                int& place = order_.placeOf[at(originOf(triangles_, h))];
                if (place < 0)
                    place = vertexCount_++;
                const int next = twin_[at(h)];
                if (next >= 0 && !isDone_[at(next / 3)]) {
                    isDone_[at(next / 3)] = 1;
                    entries.push_back(next);
                }
            }
        }
    }

    const RunControl& control_;
    std::span<const Vec3> positions_;
    std::span<const Triangle> triangles_;
    std::span<const int> twin_;
    std::vector<std::uint64_t> hashes_;
    std::vector<char> isDone_; ///< [triangle]
    int vertexCount_ = 0;
    CanonicalOrder order_;
};

} // namespace

CanonicalOrder canonicalOrder(std::span<const Vec3> positions, std::span<const char> isOnBorder,
                              std::span<const Triangle> triangles, std::span<const int> twin,
                              const RunControl& control)
{
    return Walk(positions, isOnBorder, triangles, twin, control).run();
}

} // namespace unfold3d

#pragma once

#include "MeshUtils/BoxTreeWalk.h"
#include "MeshUtils/SurfaceTriangles.h"

/// The square distances of a place from the boxes of a node; infinite for an empty one.
inline ChildDistances squareDistances(const BoxNode& node, const std::array<float, 3>& place)
{
    ChildDistances result = {};
    for (unsigned int half = 0; half < 2; ++half) {
        for (unsigned int i = 0; i < 3; ++i) {
            const Lanes at = lanesOf(place[i]);
            const Lanes outside =
                larger(larger(node.lower[i][half] - at, at - node.upper[i][half]), Lanes{});
            result.halves[half] += outside * outside;
        }
    }
    return result;
}

/// Offers the triangles of a tree that may be the closest to a place.
class ClosestWalk
{
public:
    ClosestWalk(const BoxTree& tree, std::span<const SortedTriangle> triangles,
                const std::array<float, 3>& place, ClosestSearch& search)
        : tree_(tree), triangles_(triangles), place_(place), search_(search)
    {
        drawIn();
    }

    void run()
    {
        walk(
            tree_, [this](const BoxNode& node) { return squareDistances(node, place_); },
            [this] { return limit_; },
            [this](std::uint32_t first, std::uint32_t count) {
                for (std::uint32_t seen = 0; seen < count; seen += BoxTree::PacketSize)
                    offerPacket(first++);
            });
    }

private:
    void offerPacket(std::uint32_t packet)
    {
        const std::span<const SortedTriangle> triangles = tree_.packet(packet, triangles_);
        for (const SortedTriangle& triangle : triangles)
            __builtin_prefetch(&triangle);
        const Lanes bounds = tree_.planes[packet].squareDistances(place_);
        unsigned int open = (1U << triangles.size()) - 1;
        while ((open &= bitsOf(bounds <= limitOfPlanes_)) != 0) {
            const unsigned int nearest = leastOf(bounds, open);
            open &= ~(1U << nearest);
            if (search_.offer(triangles[nearest]))
                drawIn();
        }
    }
    /// The lane of the least bound of those that are open.
    static unsigned int leastOf(const Lanes& bounds, unsigned int open)
    {
        auto least = static_cast<unsigned int>(std::countr_zero(open));
        for (unsigned int rest = open & (open - 1); rest != 0; rest &= rest - 1) {
            const auto lane = static_cast<unsigned int>(std::countr_zero(rest));
            least = bounds[lane] < bounds[least] ? lane : least;
        }
        return least;
    }
    void drawIn()
    {
        limit_ = tree_.space.limitOf(search_.squareDistance());
        limitOfPlanes_ = LeafPlanes::limitFor(limit_, place_);
    }

    const BoxTree& tree_;
    std::span<const SortedTriangle> triangles_;
    std::array<float, 3> place_;
    ClosestSearch& search_;
    float limit_ = 0;
    float limitOfPlanes_ = 0;
};

/// The point of the triangles that is closest to a given one. What `result` holds serves as a
/// guess. Returns false, with a result without a geometry, if there is none.
inline bool findClosest(const BoxTree& tree, const SurfaceTriangles& triangles,
                        const osg::Pnt3f& point, kyPointOnGeometry& result)
{
    if (triangles.isEmpty() || !isFinite(point)) {
        result = kyPointOnGeometry();
        return false;
    }
    ClosestSearch search(point);
    triangles.offerGuess(result, search);
    const std::array<float, 3> place = tree.space.place(point);
    if (SearchSpace::isNear(place))
        ClosestWalk(tree, triangles.packed(), place, search).run();
    else
        triangles.searchAll(search);
    result = triangles.pointAt(search.triangle(), search.weights());
    return true;
}

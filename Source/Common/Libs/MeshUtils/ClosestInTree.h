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

/// Where on a triangle weights of its own corners are, which may be anything: they are made to name
/// a place that is on it.
inline std::array<float, 3> placeOn(const SortedTriangle& triangle, const float (&weights)[3],
                                    const SearchSpace& space)
{
    // What is no number becomes 0.
    const float b = std::min(1.F, std::max(0.F, weights[triangle.cornerOf[1]]));
    const float c = std::min(1 - b, std::max(0.F, weights[triangle.cornerOf[2]]));
    const std::array<float, 3> corners[3] = {space.place(triangle.corners[0]),
                                             space.place(triangle.corners[1]),
                                             space.place(triangle.corners[2])};
    std::array<float, 3> place = {};
    for (unsigned int i = 0; i < 3; ++i)
        place[i] = (1 - b - c) * corners[0][i] + b * corners[1][i] + c * corners[2][i];
    return place;
}

/// Offers the triangles of a tree that may be the closest to a place.
class ClosestWalk
{
public:
    ClosestWalk(const BoxTree& tree, std::span<const SortedTriangle> triangles,
                const std::array<float, 3>& place, ClosestSearch& search)
        : tree_(tree), triangles_(triangles), place_(place), search_(search),
          rounding_(SearchSpace::roundingAt(place))
    {
        setLimit(SearchSpace::NoLimit);
    }

    /// Begins near a triangle, no farther away than a point of it.
    void beginAt(std::size_t triangle, const float (&weights)[3])
    {
        const std::array<float, 3> guess = placeOn(triangles_[triangle], weights, tree_.space);
        float square = 0;
        for (unsigned int i = 0; i < 3; ++i)
            square += (guess[i] - place_[i]) * (guess[i] - place_[i]);
        const float distance = std::sqrt(square) + rounding_;
        setLimit(std::min(distance * distance, limit_));
        start_ = tree_.clearBoxes.lowestNode(triangle, place_, limit_);
    }
    void run()
    {
        walk(
            tree_, start_, [this](const BoxNode& node) { return squareDistances(node, place_); },
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
                setLimit(std::min(tree_.space.limitOf(search_.squareDistance()), limit_));
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
    void setLimit(float limit)
    {
        limit_ = limit;
        limitOfPlanes_ = LeafPlanes::limitFor(limit, rounding_);
    }

    const BoxTree& tree_;
    std::span<const SortedTriangle> triangles_;
    std::array<float, 3> place_;
    ClosestSearch& search_;
    float rounding_;
    std::uint32_t start_ = 0;
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
    const std::array<float, 3> place = tree.space.place(point);
    if (SearchSpace::isNear(place)) {
        ClosestWalk closest(tree, triangles.packed(), place, search);
        if (const int guess = triangles.placeOf(result); guess >= 0)
            closest.beginAt(static_cast<std::size_t>(guess), result.weights);
        closest.run();
    } else {
        triangles.searchAll(search);
    }
    result = triangles.pointAt(search.triangle(), search.weights());
    return true;
}

#pragma once

#include "MeshUtils/BoxTreeWalk.h"
#include "MeshUtils/SurfaceTriangles.h"

/// The square distances of a place from the boxes of a node; infinite for an empty one.
template <unsigned int Width>
std::array<float, Width> squareDistances(const BoxNode<Width>& node,
                                         const std::array<float, 3>& place)
{
    std::array<float, Width> sums = {};
    for (unsigned int i = 0; i < 3; ++i) {
        for (unsigned int lane = 0; lane < Width; ++lane) {
            const float below = node.lower[i][lane] - place[i];
            const float above = place[i] - node.upper[i][lane];
            const float outside = below > above ? below : above;
            const float distance = outside > 0 ? outside : 0;
            sums[lane] += distance * distance;
        }
    }
    return sums;
}

template <unsigned int Width>
void searchClosest(const BoxTree<Width>& tree, const SurfaceTriangles& triangles,
                   const std::array<float, 3>& place, ClosestSearch& search)
{
    const std::span<const SortedTriangle> packed = triangles.packed();
    float limit = tree.space.limitOf(search.squareDistance());
    walk(
        tree, [&](const BoxNode<Width>& node) { return squareDistances(node, place); },
        [&] { return limit; },
        [&](std::uint32_t first, std::uint32_t count) {
            for (const SortedTriangle& triangle : packed.subspan(first, count))
                if (search.offer(triangle))
                    limit = tree.space.limitOf(search.squareDistance());
        });
}

/// The point of the triangles that is closest to a given one. What `result` holds serves as a
/// guess. Returns false, with a result without a geometry, if there is none.
template <unsigned int Width>
bool findClosest(const BoxTree<Width>& tree, const SurfaceTriangles& triangles,
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
        searchClosest(tree, triangles, place, search);
    else
        triangles.searchAll(search);
    result = triangles.pointAt(search.triangle(), search.weights());
    return true;
}

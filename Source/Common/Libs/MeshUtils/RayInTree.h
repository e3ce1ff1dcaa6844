#pragma once

#include "MeshUtils/BoxTreeWalk.h"
#include "MeshUtils/RayOnTriangle.h"
#include "MeshUtils/SurfaceTriangles.h"

#include <span>

/// Compares a ray with boxes, slab by slab. Margins make up for the rounding, after T. Ize, "Robust
/// BVH Ray Traversal", JCGT 2(2), 2013, and for that of the triangles behind the boxes.
class RayBoxes
{
public:
    RayBoxes(const Ray& ray, const std::array<float, 3>& origin) : origin_(origin)
    {
        float size = 1;
        for (unsigned int i = 0; i < 3; ++i) {
            inverse_[i] = 1.F / static_cast<float>(ray.direction()[i]);
            size = std::max(size, std::abs(origin[i]));
        }
        margin_ = size * 0x1p-44F;
    }

    /// How far along the ray the boxes of a node begin; infinite for those that it misses or that
    /// begin beyond a limit.
    [[nodiscard]] ChildDistances distances(const BoxNode& node, float limit) const
    {
        constexpr float miss = std::numeric_limits<float>::infinity();
        ChildDistances result = {};
        for (unsigned int half = 0; half < 2; ++half) {
            Lanes enter = {};
            Lanes leave = lanesOf(limit);
            for (unsigned int i = 0; i < 3; ++i) {
                const bool isForward = inverse_[i] > 0;
                const Lanes nearSide = isForward ? node.lower[i][half] : node.upper[i][half];
                const Lanes farSide = isForward ? node.upper[i][half] : node.lower[i][half];
                const float margin = isForward ? margin_ : -margin_;
                // A ray within a side gives 0 * infinity: the other operand stays.
                enter = larger((nearSide - origin_[i] - margin) * inverse_[i], enter);
                leave = smaller((farSide - origin_[i] + margin) * inverse_[i], leave);
            }
            enter *= 1 - 2e-6F;
            result.halves[half] = enter <= leave * (1 + 2e-6F) ? enter : lanesOf(miss);
        }
        return result;
    }

private:
    std::array<float, 3> origin_;
    std::array<float, 3> inverse_ = {};
    float margin_ = 0;
};

inline void searchRay(const BoxTree& tree, std::span<const SortedTriangle> triangles,
                      const RayBoxes& boxes, RaySearch& search)
{
    const auto currentLimit = [&] {
        const double limit = search.limit() * tree.space.scale() * (1 + 1e-5);
        return static_cast<float>(std::min(limit, static_cast<double>(SearchSpace::NoLimit)));
    };
    float limit = currentLimit();
    walk(
        tree, 0, [&](const BoxNode& node) { return boxes.distances(node, limit); },
        [&] { return limit; },
        [&](std::uint32_t first, std::uint32_t count) {
            for (const SortedTriangle& triangle :
                 triangles.subspan(tree.firstOfPacket[first], count))
                if (search.offer(triangle))
                    limit = currentLimit();
        });
}

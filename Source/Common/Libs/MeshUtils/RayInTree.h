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
    template <unsigned int Width>
    [[nodiscard]] std::array<float, Width> distances(const BoxNode<Width>& node, float limit) const
    {
        std::array<float, Width> enter = {};
        std::array<float, Width> leave;
        leave.fill(limit);
        for (unsigned int i = 0; i < 3; ++i) {
            const bool isForward = inverse_[i] > 0;
            const auto& nearSide = isForward ? node.lower[i] : node.upper[i];
            const auto& farSide = isForward ? node.upper[i] : node.lower[i];
            const float nearMargin = isForward ? -margin_ : margin_;
            for (unsigned int lane = 0; lane < Width; ++lane) {
                // A ray within a side gives 0 * infinity: no comparison holds, no harm is done.
                const float in = (nearSide[lane] - origin_[i] + nearMargin) * inverse_[i];
                const float out = (farSide[lane] - origin_[i] - nearMargin) * inverse_[i];
                enter[lane] = in > enter[lane] ? in : enter[lane];
                leave[lane] = out < leave[lane] ? out : leave[lane];
            }
        }
        constexpr float miss = std::numeric_limits<float>::infinity();
        for (unsigned int lane = 0; lane < Width; ++lane)
            enter[lane] = enter[lane] * (1 - 2e-6F) <= leave[lane] * (1 + 2e-6F)
                              ? enter[lane] * (1 - 2e-6F)
                              : miss;
        return enter;
    }

private:
    std::array<float, 3> origin_;
    std::array<float, 3> inverse_ = {};
    float margin_ = 0;
};

template <unsigned int Width>
void searchRay(const BoxTree<Width>& tree, std::span<const SortedTriangle> triangles,
               const RayBoxes& boxes, RaySearch& search)
{
    const auto currentLimit = [&] {
        const double limit = search.limit() * tree.space.scale() * (1 + 1e-5);
        return static_cast<float>(std::min(limit, static_cast<double>(SearchSpace::NoLimit)));
    };
    float limit = currentLimit();
    walk(
        tree, [&](const BoxNode<Width>& node) { return boxes.distances(node, limit); },
        [&] { return limit; },
        [&](std::uint32_t first, std::uint32_t count) {
            for (const SortedTriangle& triangle : triangles.subspan(first, count))
                if (search.offer(triangle))
                    limit = currentLimit();
        });
}

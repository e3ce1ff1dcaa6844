#pragma once

#include "MeshUtils/SortedTriangle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <vector>

/// An axis-aligned box in the coordinates of a SearchSpace.
struct SearchBox
{
    std::array<float, 3> lower;
    std::array<float, 3> upper;

    static SearchBox empty()
    {
        constexpr float far = std::numeric_limits<float>::infinity();
        return {{far, far, far}, {-far, -far, -far}};
    }
    [[nodiscard]] bool isEmpty() const { return lower[0] > upper[0]; }
    void widen(const SearchBox& other)
    {
        for (unsigned int i = 0; i < 3; ++i) {
            lower[i] = std::min(lower[i], other.lower[i]);
            upper[i] = std::max(upper[i], other.upper[i]);
        }
    }
};

/// The coordinates in which boxes are compared: those of the mesh times a power of two that brings
/// the mesh between -1 and 1, so that squares of floats stay in their range.
///
/// Boxes and limits are wider than the truth by more than all rounding, in float here and in double
/// where triangles are measured. So a box that is passed over holds nothing that a search over all
/// triangles would have found, equal distances included.
class SearchSpace
{
public:
    /// A place farther out than this, in multiples of the mesh's size, is not searched for by
    /// boxes: all triangles are about equally far from there.
    static constexpr float Farthest = 0x1p60F;
    /// The limit of a search that has found nothing yet: above every square distance within
    /// Farthest, below that of an empty box.
    static constexpr float NoLimit = std::numeric_limits<float>::max();

    SearchSpace() = default;
    explicit SearchSpace(std::span<const SortedTriangle> triangles)
    {
        float largest = 0;
        for (const SortedTriangle& triangle : triangles)
            for (const osg::Pnt3f& corner : triangle.corners)
                for (unsigned int i = 0; i < 3; ++i)
                    largest = std::max(largest, std::abs(corner[i]));
        int exponent = 0;
        std::frexp(largest, &exponent);
        scale_ = std::ldexp(1.F, std::clamp(-exponent, -126, 100));
    }

    [[nodiscard]] float scale() const { return scale_; }
    [[nodiscard]] std::array<float, 3> place(const osg::Pnt3f& point) const
    {
        return {point.x() * scale_, point.y() * scale_, point.z() * scale_};
    }
    static bool isNear(const std::array<float, 3>& place)
    {
        return std::ranges::all_of(place, [](float x) { return std::abs(x) < Farthest; });
    }
    /// Above the rounding of a few sums and products of floats of the size of the mesh, or of a
    /// place if that is farther out.
    static float roundingAt(const std::array<float, 3>& place)
    {
        float size = 1;
        for (const float component : place)
            size = std::max(size, std::abs(component));
        return size * 0x1p-18F;
    }
    /// What a box's square distance must not exceed for it to be looked into.
    [[nodiscard]] float limitOf(double squareDistance) const
    {
        const double limit = squareDistance * scale_ * scale_ * (1 + 1e-5) + 1e-36;
        return static_cast<float>(std::min(limit, static_cast<double>(NoLimit)));
    }

    [[nodiscard]] SearchBox boxOf(const SortedTriangle& triangle) const
    {
        SearchBox box = SearchBox::empty();
        for (const osg::Pnt3f& corner : triangle.corners) {
            const std::array<float, 3> at = place(corner);
            box.widen({at, at});
        }
        float extent = 0;
        for (unsigned int i = 0; i < 3; ++i)
            extent = std::max(extent, box.upper[i] - box.lower[i]);
        for (unsigned int i = 0; i < 3; ++i) {
            box.lower[i] -= extent * 0x1p-26F + std::abs(box.lower[i]) * 0x1p-23F;
            box.upper[i] += extent * 0x1p-26F + std::abs(box.upper[i]) * 0x1p-23F;
        }
        return box;
    }
    [[nodiscard]] std::vector<SearchBox> boxesOf(std::span<const SortedTriangle> triangles) const
    {
        std::vector<SearchBox> boxes;
        boxes.reserve(triangles.size());
        for (const SortedTriangle& triangle : triangles)
            boxes.push_back(boxOf(triangle));
        return boxes;
    }

private:
    float scale_ = 1;
};

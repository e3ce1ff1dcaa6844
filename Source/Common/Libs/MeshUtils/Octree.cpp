#include "MeshUtils/Octree.h"

#include <numeric>
#include <utility>

namespace
{

constexpr std::size_t LeafSize = 4;
/// Halvings; a triangle's middle is a float between -1 and 1.
constexpr unsigned int MaxHalvings = 30;

using Place = std::array<float, 3>;

struct Cell
{
    Place center;
    float halfSize;
    unsigned int halvings;

    [[nodiscard]] unsigned int octantOf(const Place& place) const
    {
        unsigned int octant = 0;
        for (unsigned int i = 0; i < 3; ++i)
            octant |= (place[i] >= center[i] ? 1U : 0U) << i;
        return octant;
    }
    [[nodiscard]] Cell child(unsigned int octant) const
    {
        Cell result{center, halfSize / 2, halvings + 1};
        for (unsigned int i = 0; i < 3; ++i)
            result.center[i] += (octant >> i & 1U) != 0 ? result.halfSize : -result.halfSize;
        return result;
    }
};

class OctreeBuilder
{
public:
    explicit OctreeBuilder(std::span<const SortedTriangle> triangles)
        : order_(triangles.size()), sorted_(triangles.size())
    {
        std::iota(order_.begin(), order_.end(), 0U);
        tree_.space = SearchSpace(triangles);
        boxes_.reserve(triangles.size());
        middles_.reserve(triangles.size());
        for (const SortedTriangle& triangle : triangles) {
            const SearchBox box = tree_.space.boxOf(triangle);
            boxes_.push_back(box);
            middles_.push_back({(box.lower[0] + box.upper[0]) / 2,
                                (box.lower[1] + box.upper[1]) / 2,
                                (box.lower[2] + box.upper[2]) / 2});
        }
    }

    void build()
    {
        if (!order_.empty())
            addNode({{0, 0, 0}, 1, 0}, 0, order_.size());
    }

    [[nodiscard]] std::span<const unsigned int> order() const { return order_; }
    BoxTree<8> takeTree() { return std::move(tree_); }

private:
    using Bounds = std::array<std::size_t, 9>;

    /// Adds the node of a cell with a range of the order. Returns its number and its box.
    std::pair<std::uint32_t, SearchBox> addNode(Cell cell, std::size_t begin, std::size_t end)
    {
        const Bounds bounds = splitDownToBranching(cell, begin, end);
        const auto number = static_cast<std::uint32_t>(tree_.nodes.size());
        tree_.nodes.emplace_back();
        SearchBox box = SearchBox::empty();
        for (unsigned int octant = 0; octant < 8; ++octant)
            if (bounds[octant] < bounds[octant + 1])
                box.widen(addChild(number, octant, cell, bounds));
        return {number, box};
    }

    SearchBox addChild(std::uint32_t parent, unsigned int octant, const Cell& cell,
                       const Bounds& bounds)
    {
        const std::size_t begin = bounds[octant];
        const std::size_t count = bounds[octant + 1] - begin;
        if (count > LeafSize && cell.halvings < MaxHalvings) {
            const auto [number, box] = addNode(cell.child(octant), begin, begin + count);
            tree_.nodes[parent].setChild(octant, box, number, 0);
            return box;
        }
        SearchBox box = SearchBox::empty();
        for (std::size_t i = begin; i < begin + count; ++i)
            box.widen(boxes_[order_[i]]);
        tree_.nodes[parent].setChild(octant, box, static_cast<std::uint32_t>(begin),
                                     static_cast<std::uint32_t>(count));
        return box;
    }

    /// Goes down from a cell while all of its triangles lie in one octant, so that far-off details
    /// cost no chains of nodes; then sorts its range by octant.
    Bounds splitDownToBranching(Cell& cell, std::size_t begin, std::size_t end)
    {
        for (;;) {
            const Bounds bounds = countOctants(cell, begin, end);
            const auto whole = std::adjacent_find(
                bounds.begin(), bounds.end(),
                [&](std::size_t from, std::size_t to) { return to - from == end - begin; });
            if (whole == bounds.end() || cell.halvings >= MaxHalvings) {
                sortByOctant(cell, begin, end, bounds);
                return bounds;
            }
            cell = cell.child(static_cast<unsigned int>(whole - bounds.begin()));
        }
    }

    [[nodiscard]] Bounds countOctants(const Cell& cell, std::size_t begin, std::size_t end) const
    {
        Bounds bounds = {};
        for (std::size_t i = begin; i < end; ++i)
            ++bounds[cell.octantOf(middles_[order_[i]]) + 1];
        bounds[0] = begin;
        std::partial_sum(bounds.begin(), bounds.end(), bounds.begin());
        return bounds;
    }

    void sortByOctant(const Cell& cell, std::size_t begin, std::size_t end, Bounds next)
    {
        for (std::size_t i = begin; i < end; ++i)
            sorted_[next[cell.octantOf(middles_[order_[i]])]++] = order_[i];
        std::copy(sorted_.begin() + static_cast<std::ptrdiff_t>(begin),
                  sorted_.begin() + static_cast<std::ptrdiff_t>(end),
                  order_.begin() + static_cast<std::ptrdiff_t>(begin));
    }

    std::vector<SearchBox> boxes_;
    std::vector<Place> middles_;
    std::vector<unsigned int> order_;
    std::vector<unsigned int> sorted_;
    BoxTree<8> tree_;
};

} // namespace

BoxTree<8> buildOctree(SurfaceTriangles& triangles)
{
    OctreeBuilder builder(triangles.packed());
    builder.build();
    triangles.reorder(builder.order());
    return builder.takeTree();
}

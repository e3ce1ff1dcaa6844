#include "MeshUtils/Octree.h"

#include "MeshUtils/OctantSort.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr std::size_t LeafSize = BoxTree::PacketSize;
constexpr OctantSort::Ranks InOrder = {0, 1, 2, 3, 4, 5, 6, 7};

class OctreeBuilder
{
public:
    explicit OctreeBuilder(std::span<const SortedTriangle> triangles)
        : OctreeBuilder(triangles, SearchSpace(triangles))
    {}

    void build() { addNode(Cell(), 0, boxes_.size()); }

    [[nodiscard]] std::span<const unsigned int> order() const { return sort_.order(); }
    BoxTree takeTree() { return std::move(tree_); }

private:
    OctreeBuilder(std::span<const SortedTriangle> triangles, const SearchSpace& space)
        : boxes_(space.boxesOf(triangles)), sort_(boxes_)
    {
        tree_.space = space;
    }

    /// Adds the node of a cell with a range of the order. Returns its number and its box.
    std::pair<std::uint32_t, SearchBox> addNode(Cell cell, std::size_t begin, std::size_t end)
    {
        const OctantSort::Bounds bounds = splitDownToBranching(cell, begin, end);
        const auto number = static_cast<std::uint32_t>(tree_.nodes.size());
        tree_.nodes.emplace_back();
        SearchBox box = SearchBox::empty();
        for (unsigned int octant = 0; octant < 8; ++octant)
            if (bounds[octant] < bounds[octant + 1])
                box.widen(addChild(number, octant, cell, bounds));
        return {number, box};
    }

    SearchBox addChild(std::uint32_t parent, unsigned int octant, const Cell& cell,
                       const OctantSort::Bounds& bounds)
    {
        const std::size_t begin = bounds[octant];
        const std::size_t count = bounds[octant + 1] - begin;
        if (count > LeafSize && cell.halvings < Cell::MaxHalvings) {
            const auto [number, box] = addNode(cell.child(octant), begin, begin + count);
            tree_.nodes[parent].setChild(octant, box, number, 0);
            return box;
        }
        SearchBox box = SearchBox::empty();
        for (const unsigned int triangle : order().subspan(begin, count))
            box.widen(boxes_[triangle]);
        tree_.nodes[parent].setChild(octant, box, tree_.addLeaf(begin, count),
                                     static_cast<std::uint32_t>(count));
        return box;
    }

    /// Sorts a range by the octants of a cell, and goes down from it while all of the triangles lie
    /// in one octant, so that far-off details cost no chains of nodes.
    OctantSort::Bounds splitDownToBranching(Cell& cell, std::size_t begin, std::size_t end)
    {
        for (;;) {
            const OctantSort::Bounds bounds = sort_.sort(cell, InOrder, begin, end);
            const auto whole = std::adjacent_find(
                bounds.begin(), bounds.end(),
                [&](std::size_t from, std::size_t to) { return to - from == end - begin; });
            if (whole == bounds.end() || cell.halvings >= Cell::MaxHalvings)
                return bounds;
            cell = cell.child(static_cast<unsigned int>(whole - bounds.begin()));
        }
    }

    std::vector<SearchBox> boxes_;
    OctantSort sort_;
    BoxTree tree_;
};

} // namespace

BoxTree buildOctree(SurfaceTriangles& triangles)
{
    if (triangles.isEmpty())
        return BoxTree();
    OctreeBuilder builder(triangles.packed());
    builder.build();
    triangles.reorder(builder.order());
    BoxTree tree = builder.takeTree();
    tree.finishLeaves(triangles.packed());
    return tree;
}

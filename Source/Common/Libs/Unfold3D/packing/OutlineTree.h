#pragma once

#include "Unfold3D/base/Box2.h"
#include "Unfold3D/packing/Outline.h"

#include <cstddef>
#include <span>
#include <vector>

namespace unfold3d
{

/// The outline of an island under a tree of boxes, for exact questions about its place next to
/// others.
///
/// The tree is balanced and has no pointers: node n covers a range of edges and has the children
/// 2n and 2n + 1, which cover the two halves of the range; the root is node 1.
class OutlineTree
{
public:
    struct Node
    {
        std::size_t number = 1;
        std::size_t begin = 0;
        std::size_t end = 0;

        bool isLeaf() const { return end - begin <= leafSize; }
        Node low() const { return {2 * number, begin, begin + (end - begin) / 2}; }
        Node high() const { return {2 * number + 1, begin + (end - begin) / 2, end}; }
    };

    OutlineTree() = default;
    /// Sorts the edges by place: n log n.
    explicit OutlineTree(std::vector<OutlineEdge> edges);

    bool isEmpty() const { return edges_.empty(); }
    std::span<const OutlineEdge> edges() const { return edges_; }
    Box2 bounds() const { return edges_.empty() ? Box2() : boxes_[1]; }

    Node root() const { return {1, 0, edges_.size()}; }
    const Box2& box(const Node& node) const { return boxes_[node.number]; }
    std::span<const OutlineEdge> edges(const Node& node) const
    {
        return edges().subspan(node.begin, node.end - node.begin);
    }

    /// The same outline turned around the origin by the angle of `turn` and scaled by its length.
    /// Linear.
    OutlineTree turnedBy(Vec2 turn) const;

private:
    static constexpr std::size_t leafSize = 4;

    void sort(const Node& node);
    Box2 fitBoxes(const Node& node);

    std::vector<OutlineEdge> edges_;
    std::vector<Box2> boxes_; ///< [node number]
};

} // namespace unfold3d

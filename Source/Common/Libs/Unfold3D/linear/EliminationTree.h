#pragma once

#include "Unfold3D/linear/VertexGraph.h"

#include <cstdint>
#include <span>
#include <vector>

namespace unfold3d
{

/// How the elimination of a symmetric matrix goes, column by column. The columns are numbered in
/// postorder of the tree: a column comes after all of its subtree, and a subtree is one range.
///
///   parent  [column]  the first row below the diagonal of the factor's column; -1 for a root
///   count   [column]  entries of that column in the factor, the diagonal included
struct EliminationTree
{
    std::vector<int> parent;
    std::vector<int> count;

    /// Multiplications of a factorisation with blocks of one number.
    double operations() const;
};

/// An elimination order with its graph and tree in the numbers of that order.
struct OrderedGraph
{
    std::vector<int> oldOfNew;
    VertexGraph graph;
    EliminationTree tree;
};

/// Follows the elimination in the given order (oldOfNew) without computing the factor, and
/// renumbers the columns in postorder, which changes nothing about the factor but its numbers.
/// Nearly linear in the entries of the matrix.
///
/// The tree is built as by Liu (1990), the counts as by Gilbert, Ng and Peyton (1994).
OrderedGraph followElimination(const VertexGraph& graph, std::vector<int> oldOfNew);

/// The inverse of a permutation.
std::vector<int> inverted(std::span<const int> permutation);

} // namespace unfold3d

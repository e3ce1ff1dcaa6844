#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/linear/VertexGraph.h"

#include <cstddef>
#include <span>
#include <vector>

namespace unfold3d
{

/// All about the factor of a symmetric matrix that follows from its graph alone: the order of
/// elimination, the pattern of the lower triangle, and the dense blocks of the factor. Found once,
/// it serves matrices with a number or a 2 by 2 block for each pair of nodes that meet.
///
/// Everything but the two permutations is in the numbers of the order of elimination ("columns").
/// Who owns arrays per node does well to renumber them once in that order.
///
///   oldOfNew, newOfOld  [node]
///   columnOffsets       [column + 1]     where the entries below the diagonal of a column begin
///   entryRows           [entry]          row of each entry, ascending within a column
///   firstColumn         [supernode + 1]  the columns of a supernode are one range
///   parent              [supernode]      -1 for a root; a parent comes after its whole subtree
///   rowOffsets          [supernode + 1]  where its list of rows begins
///   rows                [...]            the rows below the columns of a supernode, ascending
///   panelOffsets        [supernode + 1]  where its dense block begins, in blocks (nodes squared)
///   isOddDepth          [supernode]      whether it is an odd number of steps below a root; the
///                                        updates of these wait on a stack of their own
struct SymbolicCholesky
{
    std::vector<int> oldOfNew;
    std::vector<int> newOfOld;
    std::vector<int> columnOffsets;
    std::vector<int> entryRows;
    std::vector<int> firstColumn;
    std::vector<int> parent;
    std::vector<int> rowOffsets;
    std::vector<int> rows;
    std::vector<std::size_t> panelOffsets;
    std::vector<char> isOddDepth;
    std::size_t stackPeaks[2] = {}; ///< largest totals of waiting updates, in blocks
    double operations = 0.0;        ///< multiplications with blocks of one number

    int size() const { return static_cast<int>(oldOfNew.size()); }
    int supernodeCount() const { return static_cast<int>(parent.size()); }
    int columnCount(int supernode) const
    {
        const auto s = static_cast<std::size_t>(supernode);
        return firstColumn[s + 1] - firstColumn[s];
    }
    std::span<const int> rowsOf(int supernode) const
    {
        const auto begin =
            static_cast<std::size_t>(rowOffsets[static_cast<std::size_t>(supernode)]);
        const auto end =
            static_cast<std::size_t>(rowOffsets[static_cast<std::size_t>(supernode) + 1]);
        return std::span(rows).subspan(begin, end - begin);
    }

    /// Number of the entry that joins two different columns; noEntry when they don't meet.
    int entryOf(int columnA, int columnB) const;
    static constexpr int noEntry = -1;
};

/// Analyses a graph in an order of its own choice: minimum degree for small graphs, nested
/// dissection for large ones and for those on which minimum degree does badly. Much cheaper than
/// one factorisation of the large, as dear as one of the small. The same result on every run.
SymbolicCholesky analyse(const VertexGraph& graph, const RunControl& control);

/// Analyses a graph in the order given by the caller.
SymbolicCholesky analyse(const VertexGraph& graph, std::vector<int> oldOfNew,
                         const RunControl& control);

} // namespace unfold3d

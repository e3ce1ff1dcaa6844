#include "Unfold3D/linear/SymbolicCholesky.h"

#include "Unfold3D/linear/EliminationOrder.h"
#include "Unfold3D/linear/EliminationTree.h"
#include "Unfold3D/linear/Supernodes.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// From here on the time of the dissection is paid back by any factorisation.
constexpr int smallestAlwaysDissected = 100'000;
/// Minimum degree is known to do well when it needs fewer than this many multiplications per
/// n^1.5, the growth of the best orders of a mesh.
constexpr double operationsOfGoodOrder = 25.0;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

OrderedGraph orderConnected(const VertexGraph& graph, const RunControl& control)
{
    const int n = graph.size();
    if (n >= smallestAlwaysDissected)
        return followElimination(graph, dissectionOrder(graph, control));
    OrderedGraph byDegree = followElimination(graph, minimumDegreeOrder(graph));
    if (byDegree.tree.operations() <= operationsOfGoodOrder * std::pow(n, 1.5))
        return byDegree;
    OrderedGraph dissected = followElimination(graph, dissectionOrder(graph, control));
    return dissected.tree.operations() < byDegree.tree.operations() ? std::move(dissected)
                                                                    : std::move(byDegree);
}

/// Nodes that meet no other come first, so that only the rest has to be ordered.
OrderedGraph orderWell(const VertexGraph& graph, const RunControl& control)
{
    std::vector<int> order;
    std::vector<int> connected;
    std::vector<int> placeAmongConnected(at(graph.size()));
    for (int node = 0; node < graph.size(); ++node) {
        placeAmongConnected[at(node)] = static_cast<int>(connected.size());
        (graph.of(node).empty() ? order : connected).push_back(node);
    }
    if (order.empty())
        return orderConnected(graph, control);
    VertexGraph rest;
    for (const int node : connected) {
        for (const int neighbour : graph.of(node))
            rest.neighbours.push_back(placeAmongConnected[at(neighbour)]);
        rest.offsets.push_back(static_cast<int>(rest.neighbours.size()));
    }
    for (const int place : orderConnected(rest, control).oldOfNew)
        order.push_back(connected[at(place)]);
    return followElimination(graph, std::move(order));
}

/// Numbers the columns supernode by supernode in the sequence of their elimination.
std::vector<int> numberColumns(const SupernodeTree& tree, SymbolicCholesky& symbolic)
{
    const std::vector<int> sequence = eliminationSequence(tree);
    std::vector<int> placeInSequence(sequence.size());
    std::vector<int> newOfOrdered(symbolic.oldOfNew.size());
    int next = 0;
    for (std::size_t place = 0; place < sequence.size(); ++place) {
        placeInSequence[at(sequence[place])] = static_cast<int>(place);
        symbolic.firstColumn.push_back(next);
        for (const int column : tree.columnsOf[at(sequence[place])])
            newOfOrdered[at(column)] = next++;
    }
    symbolic.firstColumn.push_back(next);
    for (const int supernode : sequence) {
        const int above = tree.parent[at(supernode)];
        symbolic.parent.push_back(above < 0 ? -1 : placeInSequence[at(above)]);
    }
    return newOfOrdered;
}

void layOutEntries(const VertexGraph& graph, SymbolicCholesky& symbolic)
{
    symbolic.columnOffsets.assign(1, 0);
    symbolic.columnOffsets.reserve(graph.offsets.size());
    symbolic.entryRows.reserve(graph.neighbours.size() / 2);
    for (int j = 0; j < graph.size(); ++j) {
        const std::span<const int> row = graph.of(j);
        symbolic.entryRows.insert(symbolic.entryRows.end(),
                                  std::upper_bound(row.begin(), row.end(), j), row.end());
        symbolic.columnOffsets.push_back(static_cast<int>(symbolic.entryRows.size()));
    }
}

/// The rows of a supernode are those of its columns' entries and of its children's updates.
void collectRows(SymbolicCholesky& symbolic)
{
    const int count = symbolic.supernodeCount();
    std::vector<int> lastSeenBy(symbolic.oldOfNew.size(), -1);
    std::vector<int> waiting; // supernodes whose parent is still to come
    symbolic.rowOffsets.assign(1, 0);
    for (int s = 0; s < count; ++s) {
        const int end = symbolic.firstColumn[at(s) + 1];
        const std::size_t begin = symbolic.rows.size();
        const auto take = [&](int row) {
            if (row >= end && lastSeenBy[at(row)] != s) {
                lastSeenBy[at(row)] = s;
                symbolic.rows.push_back(row);
            }
        };
        for (int e = symbolic.columnOffsets[at(symbolic.firstColumn[at(s)])];
             e < symbolic.columnOffsets[at(end)]; ++e)
            take(symbolic.entryRows[at(e)]);
        for (; !waiting.empty() && symbolic.parent[at(waiting.back())] == s; waiting.pop_back())
            for (int i = symbolic.rowOffsets[at(waiting.back())];
                 i < symbolic.rowOffsets[at(waiting.back()) + 1]; ++i)
                take(symbolic.rows[at(i)]);
        waiting.push_back(s);
        std::sort(symbolic.rows.begin() + static_cast<std::ptrdiff_t>(begin), symbolic.rows.end());
        symbolic.rowOffsets.push_back(static_cast<int>(symbolic.rows.size()));
    }
}

void measurePanels(SymbolicCholesky& symbolic)
{
    symbolic.panelOffsets.assign(1, 0);
    for (int s = 0; s < symbolic.supernodeCount(); ++s) {
        const std::size_t columns = at(symbolic.columnCount(s));
        const std::size_t height = columns + symbolic.rowsOf(s).size();
        symbolic.panelOffsets.push_back(symbolic.panelOffsets.back() + columns * height);
        for (std::size_t j = 0; j < columns; ++j) {
            const double rest = static_cast<double>(height - j);
            symbolic.operations += rest * rest;
        }
    }
}

void measureStacks(SymbolicCholesky& symbolic)
{
    const int count = symbolic.supernodeCount();
    symbolic.isOddDepth.assign(at(count), 0);
    for (int s = count - 1; s >= 0; --s)
        if (const int above = symbolic.parent[at(s)]; above >= 0)
            symbolic.isOddDepth[at(s)] = static_cast<char>(1 - symbolic.isOddDepth[at(above)]);

    const auto updateSize = [&](int s) {
        return symbolic.rowsOf(s).size() * symbolic.rowsOf(s).size();
    };
    std::vector<int> waiting; // supernodes whose parent is to come
    std::size_t stacks[2] = {};
    for (int s = 0; s < count; ++s) {
        const std::size_t own = at(symbolic.isOddDepth[at(s)]);
        stacks[own] += updateSize(s);
        symbolic.stackPeaks[own] = std::max(symbolic.stackPeaks[own], stacks[own]);
        for (; !waiting.empty() && symbolic.parent[at(waiting.back())] == s; waiting.pop_back())
            stacks[1 - own] -= updateSize(waiting.back());
        waiting.push_back(s);
    }
}

SymbolicCholesky describe(OrderedGraph ordered, const RunControl& control)
{
    control.checkpoint();
    SymbolicCholesky symbolic;
    symbolic.oldOfNew = std::move(ordered.oldOfNew);
    const std::vector<int> newOfOrdered = numberColumns(groupColumns(ordered.tree), symbolic);
    std::vector<int> oldOfNew(symbolic.oldOfNew.size());
    for (std::size_t i = 0; i < oldOfNew.size(); ++i)
        oldOfNew[at(newOfOrdered[i])] = symbolic.oldOfNew[i];
    symbolic.oldOfNew = std::move(oldOfNew);
    symbolic.newOfOld = inverted(symbolic.oldOfNew);
    control.checkpoint();
    layOutEntries(renumbered(ordered.graph, newOfOrdered), symbolic);
    control.checkpoint();
    collectRows(symbolic);
    control.checkpoint();
    measurePanels(symbolic);
    measureStacks(symbolic);
    return symbolic;
}

} // namespace

int SymbolicCholesky::entryOf(int columnA, int columnB) const
{
    const auto [column, row] = std::minmax(columnA, columnB);
    const auto begin = entryRows.begin() + columnOffsets[at(column)];
    const auto end = entryRows.begin() + columnOffsets[at(column) + 1];
    const auto found = std::lower_bound(begin, end, row);
    return found != end && *found == row ? static_cast<int>(found - entryRows.begin()) : noEntry;
}

SymbolicCholesky analyse(const VertexGraph& graph, const RunControl& control)
{
    return describe(orderWell(graph, control), control);
}

SymbolicCholesky analyse(const VertexGraph& graph, std::vector<int> oldOfNew,
                         const RunControl& control)
{
    return describe(followElimination(graph, std::move(oldOfNew)), control);
}

} // namespace unfold3d

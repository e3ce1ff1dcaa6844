#include "Unfold3D/linear/EliminationTree.h"

#include <algorithm>
#include <cstddef>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

std::vector<int> eliminationParents(const VertexGraph& graph)
{
    const int n = graph.size();
    std::vector<int> parent(at(n), -1);
    std::vector<int> ancestor(at(n), -1); // with shortened paths
    for (int j = 0; j < n; ++j) {
        for (const int neighbour : graph.of(j)) {
            if (neighbour >= j)
                break;
            int i = neighbour;
            while (ancestor[at(i)] != -1 && ancestor[at(i)] != j) {
                const int next = ancestor[at(i)];
                ancestor[at(i)] = j;
                i = next;
            }
            if (ancestor[at(i)] == -1)
                ancestor[at(i)] = parent[at(i)] = j;
        }
    }
    return parent;
}

/// newOfOld of a postorder, children in ascending order. Parents have higher numbers already.
std::vector<int> postorder(std::span<const int> parent)
{
    // Walking down from the last column, a node knows where its own range ends; its children take
    // their ranges from that end downward, the highest child first.
    const int n = static_cast<int>(parent.size());
    std::vector<int> subtree(at(n), 1);
    for (int j = 0; j < n; ++j)
        if (parent[at(j)] >= 0)
            subtree[at(parent[at(j)])] += subtree[at(j)];
    std::vector<int> newOfOld(at(n));
    std::vector<int> endOfFree(at(n)); // for the children of a node that have no number yet
    int endOfRoots = n;
    for (int j = n - 1; j >= 0; --j) {
        int& end = parent[at(j)] >= 0 ? endOfFree[at(parent[at(j)])] : endOfRoots;
        newOfOld[at(j)] = end - 1;
        endOfFree[at(j)] = end - 1;
        end -= subtree[at(j)];
    }
    return newOfOld;
}

/// Counts the entries of each factor column. Row i of the factor is a subtree of the elimination
/// tree whose leaves are entries of the matrix; only leaves have to be looked at.
std::vector<int> columnCounts(const VertexGraph& graph, std::span<const int> parent)
{
    const int n = graph.size();
    std::vector<int> firstDescendant(at(n), -1);
    std::vector<int> count(at(n), 0);
    for (int j = 0; j < n; ++j) {
        if (firstDescendant[at(j)] == -1) {
            firstDescendant[at(j)] = j;
            count[at(j)] = 1;
        }
        const int p = parent[at(j)];
        if (p >= 0 && firstDescendant[at(p)] == -1)
            firstDescendant[at(p)] = firstDescendant[at(j)];
    }

    std::vector<int> lastEntry(at(n), -1); // last column seen with an entry in this row
    std::vector<int> lastLeaf(at(n), -1);
    std::vector<int> ancestor(at(n));
    for (int j = 0; j < n; ++j)
        ancestor[at(j)] = j;
    const auto root = [&ancestor](int i) {
        int top = i;
        while (ancestor[at(top)] != top)
            top = ancestor[at(top)];
        while (ancestor[at(i)] != top) {
            const int next = ancestor[at(i)];
            ancestor[at(i)] = top;
            i = next;
        }
        return top;
    };
    for (int j = 0; j < n; ++j) {
        if (parent[at(j)] >= 0)
            --count[at(parent[at(j)])];
        const std::span<const int> row = graph.of(j);
        for (auto i = std::upper_bound(row.begin(), row.end(), j); i != row.end(); ++i) {
            if (lastEntry[at(*i)] < firstDescendant[at(j)]) {
                ++count[at(j)];
                if (lastLeaf[at(*i)] >= 0)
                    --count[at(root(lastLeaf[at(*i)]))]; // counted by both leaves
                lastLeaf[at(*i)] = j;
            }
            lastEntry[at(*i)] = j;
        }
        if (parent[at(j)] >= 0)
            ancestor[at(j)] = parent[at(j)];
    }
    for (int j = 0; j < n; ++j)
        if (parent[at(j)] >= 0)
            count[at(parent[at(j)])] += count[at(j)];
    return count;
}

} // namespace

double EliminationTree::operations() const
{
    double sum = 0.0;
    for (const int c : count)
        sum += static_cast<double>(c) * static_cast<double>(c);
    return sum;
}

std::vector<int> inverted(std::span<const int> permutation)
{
    std::vector<int> inverse(permutation.size());
    for (std::size_t i = 0; i < permutation.size(); ++i)
        inverse[at(permutation[i])] = static_cast<int>(i);
    return inverse;
}

OrderedGraph followElimination(const VertexGraph& graph, std::vector<int> oldOfNew)
{
    VertexGraph ordered = renumbered(graph, inverted(oldOfNew));
    const std::vector<int> parent = eliminationParents(ordered);
    const std::vector<int> postOfOrder = postorder(parent);

    OrderedGraph result;
    result.graph = renumbered(ordered, postOfOrder);
    result.oldOfNew.resize(oldOfNew.size());
    result.tree.parent.assign(oldOfNew.size(), -1);
    for (std::size_t i = 0; i < oldOfNew.size(); ++i) {
        const std::size_t post = at(postOfOrder[i]);
        result.oldOfNew[post] = oldOfNew[i];
        if (parent[i] >= 0)
            result.tree.parent[post] = postOfOrder[at(parent[i])];
    }
    result.tree.count = columnCounts(result.graph, result.tree.parent);
    return result;
}

} // namespace unfold3d

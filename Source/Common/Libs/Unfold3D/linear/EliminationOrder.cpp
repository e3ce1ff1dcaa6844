#include "Unfold3D/linear/EliminationOrder.h"

#include "Unfold3D/linear/Dissector.h"
#include "Unfold3D/linear/VertexSeparator.h"

#include <Eigen/OrderingMethods>
#include <Eigen/SparseCore>

#include <algorithm>
#include <numeric>

namespace unfold3d
{

namespace
{

/// Below this many nodes there is nothing to dissect.
constexpr int smallestDissected = 64;
/// Larger graphs are parted first, so that the dissection, which can't be interrupted, takes some
/// tens of milliseconds at most.
constexpr int largestDissectedWhole = 10'000;

/// The part of a graph on one side, with the names that its nodes have in the whole.
struct Part
{
    VertexGraph graph;
    std::vector<int> names;
};

Part partOn(Side side, const VertexGraph& graph, std::span<const int> names,
            const std::vector<Side>& sides)
{
    Part part;
    std::vector<int> placeInPart(sides.size(), -1);
    for (std::size_t v = 0; v < sides.size(); ++v)
        if (sides[v] == side) {
            placeInPart[v] = static_cast<int>(part.names.size());
            part.names.push_back(names[v]);
        }
    part.graph.offsets.reserve(part.names.size() + 1);
    for (std::size_t v = 0; v < sides.size(); ++v) {
        if (sides[v] != side)
            continue;
        for (const int neighbour : graph.of(static_cast<int>(v)))
            if (const int place = placeInPart[static_cast<std::size_t>(neighbour)]; place >= 0)
                part.graph.neighbours.push_back(place);
        part.graph.offsets.push_back(static_cast<int>(part.graph.neighbours.size()));
    }
    return part;
}

/// Appends the names of the nodes in an order that eliminates both sides of a separator before it.
void dissect(const VertexGraph& graph, std::span<const int> names, const RunControl& control,
             std::vector<int>& order)
{
    control.checkpoint();
    std::optional<std::vector<Side>> sides;
    if (graph.size() > largestDissectedWhole)
        sides = separate(graph, control);
    if (!sides) {
        const std::optional<std::vector<int>> whole = dissectToTheEnd(graph);
        for (const int v : whole ? *whole : minimumDegreeOrder(graph))
            order.push_back(names[static_cast<std::size_t>(v)]);
        return;
    }
    for (const Side side : {Side::Low, Side::High}) {
        const Part part = partOn(side, graph, names, *sides);
        dissect(part.graph, part.names, control, order);
    }
    for (std::size_t v = 0; v < sides->size(); ++v)
        if ((*sides)[v] == Side::Separator)
            order.push_back(names[v]);
}

} // namespace

std::vector<int> minimumDegreeOrder(const VertexGraph& graph)
{
    const int n = graph.size();
    // A row without an entry on the diagonal would count as full.
    const auto entryCount = graph.neighbours.size() + static_cast<std::size_t>(n);
    Eigen::SparseMatrix<double> pattern(n, n);
    pattern.resizeNonZeros(static_cast<Eigen::Index>(entryCount));
    int* entry = pattern.innerIndexPtr();
    for (int node = 0; node < n; ++node) {
        pattern.outerIndexPtr()[node] = static_cast<int>(entry - pattern.innerIndexPtr());
        *entry++ = node;
        entry = std::copy(graph.of(node).begin(), graph.of(node).end(), entry);
    }
    pattern.outerIndexPtr()[n] = static_cast<int>(entryCount);
    std::fill_n(pattern.valuePtr(), entryCount, 1.0);
    Eigen::PermutationMatrix<Eigen::Dynamic, Eigen::Dynamic, int> order;
    Eigen::internal::minimum_degree_ordering(pattern, order);
    return {order.indices().data(), order.indices().data() + n};
}

std::vector<int> dissectionOrder(const VertexGraph& graph, const RunControl& control)
{
    if (graph.size() < smallestDissected || graph.neighbours.empty())
        return minimumDegreeOrder(graph);
    std::vector<int> all(static_cast<std::size_t>(graph.size()));
    std::iota(all.begin(), all.end(), 0);
    std::vector<int> order;
    order.reserve(all.size());
    dissect(graph, all, control, order);
    return order;
}

} // namespace unfold3d

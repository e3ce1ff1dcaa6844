#include "Unfold3D/linear/VertexGraph.h"

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

/// Collects the entries of all rows, then sorts each row and drops what stands twice.
class RowCollector
{
public:
    explicit RowCollector(int nodeCount) : offsets_(at(nodeCount) + 1, 0) {}

    void count(int node, int entries) { offsets_[at(node) + 1] += entries; }

    void beginFilling()
    {
        for (std::size_t i = 1; i < offsets_.size(); ++i)
            offsets_[i] += offsets_[i - 1];
        entries_.resize(at(offsets_.back()));
        next_.assign(offsets_.begin(), offsets_.end() - 1);
    }

    void put(int node, int neighbour) { entries_[at(next_[at(node)]++)] = neighbour; }

    VertexGraph finish()
    {
        auto out = entries_.begin();
        int begin = 0;
        for (std::size_t node = 0; node + 1 < offsets_.size(); ++node) {
            const auto first = entries_.begin() + begin;
            const auto last = entries_.begin() + offsets_[node + 1];
            begin = offsets_[node + 1];
            std::sort(first, last);
            out = std::unique_copy(first, last, out);
            offsets_[node + 1] = static_cast<int>(out - entries_.begin());
        }
        entries_.erase(out, entries_.end());
        return {std::move(offsets_), std::move(entries_)};
    }

private:
    std::vector<int> offsets_;
    std::vector<int> entries_;
    std::vector<int> next_;
};

} // namespace

VertexGraph vertexGraph(std::span<const Triangle> triangles, int nodeCount,
                        std::span<const NodePair> pairs)
{
    RowCollector rows(nodeCount);
    for (const Triangle& triangle : triangles)
        for (const int vertex : triangle)
            rows.count(vertex, 2);
    for (const auto& [a, b] : pairs) {
        if (a == b)
            continue;
        rows.count(a, 1);
        rows.count(b, 1);
    }
    rows.beginFilling();
    for (const auto& [a, b, c] : triangles) {
        rows.put(a, b);
        rows.put(a, c);
        rows.put(b, a);
        rows.put(b, c);
        rows.put(c, a);
        rows.put(c, b);
    }
    for (const auto& [a, b] : pairs) {
        if (a == b)
            continue;
        rows.put(a, b);
        rows.put(b, a);
    }
    return rows.finish();
}

VertexGraph graphOfPairs(std::span<const NodePair> pairs, int nodeCount)
{
    return vertexGraph({}, nodeCount, pairs);
}

VertexGraph renumbered(const VertexGraph& graph, std::span<const int> newOfOld)
{
    const int n = graph.size();
    VertexGraph result;
    result.offsets.assign(at(n) + 1, 0);
    for (int v = 0; v < n; ++v)
        result.offsets[at(newOfOld[at(v)]) + 1] = static_cast<int>(graph.of(v).size());
    for (std::size_t i = 1; i < result.offsets.size(); ++i)
        result.offsets[i] += result.offsets[i - 1];
    result.neighbours.resize(graph.neighbours.size());
    for (int v = 0; v < n; ++v) {
        const int begin = result.offsets[at(newOfOld[at(v)])];
        auto out = result.neighbours.begin() + begin;
        for (const int w : graph.of(v))
            *out++ = newOfOld[at(w)];
        std::sort(result.neighbours.begin() + begin, out);
    }
    return result;
}

} // namespace unfold3d

#include "Unfold3D/mesh/HalfEdges.h"

#include "Unfold3D/base/OffsetArray.h"

#include <algorithm>

namespace unfold3d
{

HalfEdges pairHalfEdges(std::span<const Triangle> triangles, int vertexCount)
{
    std::vector<int> lowEnd(3 * triangles.size());
    std::vector<int> highEnd(lowEnd.size());
    for (std::size_t h = 0; h < lowEnd.size(); ++h) {
        const int from = originOf(triangles, static_cast<int>(h));
        const int to = targetOf(triangles, static_cast<int>(h));
        lowEnd[h] = std::min(from, to);
        highEnd[h] = std::max(from, to);
    }
    OffsetArray<int> atLowEnd = groupByKey(lowEnd, vertexCount);

    HalfEdges edges;
    edges.twin.assign(lowEnd.size(), HalfEdges::border);
    for (int v = 0; v < vertexCount; ++v) {
        const auto begin = atLowEnd.flat.begin() + atLowEnd.offsets[static_cast<std::size_t>(v)];
        const auto end = atLowEnd.flat.begin() + atLowEnd.offsets[static_cast<std::size_t>(v) + 1];
        const auto highOf = [&](int h) { return highEnd[static_cast<std::size_t>(h)]; };
        std::sort(begin, end, [&](int a, int b) {
            return highOf(a) != highOf(b) ? highOf(a) < highOf(b) : a < b;
        });
        for (auto first = begin, last = begin; first != end; first = last) {
            while (last != end && highOf(*last) == highOf(*first))
                ++last;
            if (last - first == 2) {
                edges.twin[static_cast<std::size_t>(first[0])] = first[1];
                edges.twin[static_cast<std::size_t>(first[1])] = first[0];
            } else if (last - first > 2) {
                for (auto h = first; h != last; ++h)
                    edges.twin[static_cast<std::size_t>(*h)] = HalfEdges::crowded;
            }
        }
    }
    return edges;
}

} // namespace unfold3d

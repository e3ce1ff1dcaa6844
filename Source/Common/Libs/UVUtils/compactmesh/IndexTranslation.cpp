#include "UVUtils/compactmesh/CompactShellMesh.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace
{

using Ids = std::vector<unsigned int>;

/// The first place in [begin, end) of a sorted order that is not below what is sought. The steps
/// don't depend on the outcome of comparisons, so that there is no branch to mispredict.
template <class IsBelow>
std::size_t lowerBound(std::size_t begin, std::size_t end, const IsBelow& isBelow)
{
    std::size_t count = end - begin;
    while (count > 1) {
        const std::size_t half = count / 2;
        begin += isBelow(begin + half - 1) ? half : 0;
        count -= half;
    }
    return begin + (count == 1 && isBelow(begin) ? 1 : 0);
}

/// Two ids in one number that sorts by the first, then the second.
std::uint64_t joined(unsigned int first, unsigned int second)
{
    return (std::uint64_t{first} << 32U) | second;
}

/// The triangles in one of their orders, by two of their three places.
struct EdgeOrder
{
    const Ids& offsets;       ///< where each triangle starts
    const Ids& beginOfVertex; ///< where those with a vertex in the first place begin in the order
    unsigned int first;       ///< the places, 0 to 2
    unsigned int second;
};

void appendTranslated(const Ids& table, const unsigned int* ids, unsigned int count, Ids& out)
{
    const std::size_t begin = out.size();
    out.resize(begin + count); // not reserve, which would grow by just this much on every call
    for (unsigned int i = 0; i < count; ++i)
        out[begin + i] = table[ids[i]];
}

} // namespace

Edge CompactShellMesh::mapEdgeFToC(Edge edge) const
{
    return {vertFToC_[edge.first], vertFToC_[edge.second]};
}

void CompactShellMesh::mapVertsFToC(const unsigned int* ids, unsigned int count, Ids& out) const
{
    appendTranslated(vertFToC_, ids, count, out);
}

void CompactShellMesh::mapEdgesFToC(const unsigned int* ids, unsigned int count, Ids& out) const
{
    appendTranslated(vertFToC_, ids, count, out);
}

void CompactShellMesh::mapVertsCToF(const unsigned int* ids, unsigned int count, Ids& out,
                                    bool all) const
{
    for (unsigned int i = 0; i < count; ++i) {
        const auto sources = vertCToF_[ids[i]];
        if (all)
            out.insert(out.end(), sources.begin(), sources.end());
        else if (!sources.empty())
            out.push_back(sources.front());
    }
}

void CompactShellMesh::mapEdgesCToF(const unsigned int* ids, unsigned int count,
                                    FlatEdgeList& out) const
{
    // An edge lies at one of three pairs of places, since the ids of a triangle ascend.
    const std::array<EdgeOrder, 3> orders{EdgeOrder{faceOrder012_, lowestBegin_, 0, 1},
                                          EdgeOrder{faceOrder02_, lowestBegin_, 0, 2},
                                          EdgeOrder{faceOrder12_, middleBegin_, 1, 2}};
    const auto appendFrom = [&](const EdgeOrder& order, Edge edge) {
        const auto faceAt = [&](std::size_t i) { return facesSortedF_.data() + order.offsets[i]; };
        const auto secondAt = [&](std::size_t i) { return vertFToC_[faceAt(i)[order.second]]; };
        const std::size_t end = order.beginOfVertex[edge.first + 1];
        const std::size_t found =
            lowerBound(order.beginOfVertex[edge.first], end,
                       [&](std::size_t i) { return secondAt(i) < edge.second; });
        if (found == end || secondAt(found) != edge.second)
            return false;
        out.insert(out.end(), {faceAt(found)[order.first], faceAt(found)[order.second]});
        return true;
    };
    for (unsigned int i = 0; i + 1 < count; i += 2) {
        const Edge edge(ids[i], ids[i + 1]);
        std::any_of(orders.begin(), orders.end(),
                    [&](const EdgeOrder& order) { return appendFrom(order, edge); });
    }
}

void CompactShellMesh::mapSMeshCToF(const unsigned int* ids, unsigned int count, Ids& out) const
{
    const auto upperIdsAt = [&](std::size_t k) {
        const unsigned int* face = facesSortedF_.data() + faceOrder012_[k];
        return joined(vertFToC_[face[1]], vertFToC_[face[2]]);
    };
    for (unsigned int i = 0; i + 2 < count; i += 3) {
        std::array<unsigned int, 3> corners{ids[i], ids[i + 1], ids[i + 2]};
        std::sort(corners.begin(), corners.end());
        const std::uint64_t sought = joined(corners[1], corners[2]);
        const std::size_t end = lowestBegin_[corners[0] + 1];
        const std::size_t found = lowerBound(lowestBegin_[corners[0]], end,
                                             [&](std::size_t k) { return upperIdsAt(k) < sought; });
        if (found == end || upperIdsAt(found) != sought)
            continue;
        const unsigned int* face = facesF_.data() + faceOrder012_[found];
        out.insert(out.end(), face, face + 3);
    }
}

#include "UVUtils/compactmesh/CompactShellMesh.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace
{

using Ids = std::vector<unsigned int>;

/// How many of `count` sorted entries are below what is sought. The steps don't depend on the
/// outcome of comparisons, so that there is no branch to mispredict.
template <class IsBelow>
std::size_t lowerBound(std::size_t count, const IsBelow& isBelow)
{
    std::size_t begin = 0;
    while (count > 1) {
        const std::size_t half = count / 2;
        begin += isBelow(begin + half - 1) ? half : 0;
        count -= half;
    }
    return begin + (count == 1 && isBelow(begin) ? 1 : 0);
}

/// The same, quick where the answer is a little above `near`: leaps that grow from there narrow the
/// search down.
template <class IsBelow>
std::size_t lowerBoundNear(std::size_t near, std::size_t count, const IsBelow& isBelow)
{
    if (near >= count || !isBelow(near))
        return lowerBound(std::min(near, count), isBelow);
    std::size_t begin = near + 1;
    std::size_t leap = 1;
    while (leap <= count - begin && isBelow(begin + leap - 1)) {
        begin += leap;
        leap *= 2;
    }
    return begin + lowerBound(std::min(leap, count - begin),
                              [&](std::size_t i) { return isBelow(begin + i); });
}

/// Two ids in one number that sorts by the first, then the second.
std::uint64_t joined(unsigned int first, unsigned int second)
{
    return (std::uint64_t{first} << 32U) | second;
}

/// The triangles in one of their orders, by two of their three places.
struct EdgeOrder
{
    const Ids& offsets; ///< where each triangle starts
    unsigned int first; ///< the places, 0 to 2
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
        const Ids& sources = vertCToF_[ids[i]];
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
    const std::array<EdgeOrder, 3> orders{EdgeOrder{faceOrder012_, 0, 1},
                                          EdgeOrder{faceOrder02_, 0, 2},
                                          EdgeOrder{faceOrder12_, 1, 2}};
    const auto appendFrom = [&](const EdgeOrder& order, std::uint64_t sought) {
        const auto edgeAt = [&](std::size_t k) {
            const unsigned int* face = facesSortedF_.data() + order.offsets[k];
            return joined(vertFToC_[face[order.first]], vertFToC_[face[order.second]]);
        };
        const std::size_t k =
            lowerBound(order.offsets.size(), [&](std::size_t i) { return edgeAt(i) < sought; });
        if (k == order.offsets.size() || edgeAt(k) != sought)
            return false;
        const unsigned int* face = facesSortedF_.data() + order.offsets[k];
        out.insert(out.end(), {face[order.first], face[order.second]});
        return true;
    };
    for (unsigned int i = 0; i + 1 < count; i += 2) {
        const Edge edge(ids[i], ids[i + 1]);
        const std::uint64_t sought = joined(edge.first, edge.second);
        std::any_of(orders.begin(), orders.end(),
                    [&](const EdgeOrder& order) { return appendFrom(order, sought); });
    }
}

void CompactShellMesh::mapSMeshCToF(const unsigned int* ids, unsigned int count, Ids& out) const
{
    struct Face
    {
        std::uint64_t edge; ///< the two lower ids
        unsigned int third;
        auto operator<=>(const Face&) const = default;
    };
    const auto faceAt = [&](std::size_t k) {
        const unsigned int* face = facesSortedF_.data() + faceOrder012_[k];
        return Face{joined(vertFToC_[face[0]], vertFToC_[face[1]]), vertFToC_[face[2]]};
    };
    // The triangles of an island come in the order of the table: the next one isn't far.
    std::size_t k = 0;
    for (unsigned int i = 0; i + 2 < count; i += 3) {
        std::array<unsigned int, 3> corners{ids[i], ids[i + 1], ids[i + 2]};
        std::sort(corners.begin(), corners.end());
        const Face sought{joined(corners[0], corners[1]), corners[2]};
        k = lowerBoundNear(k, faceOrder012_.size(),
                           [&](std::size_t j) { return faceAt(j) < sought; });
        if (k == faceOrder012_.size() || faceAt(k) != sought)
            continue;
        const unsigned int* face = facesF_.data() + faceOrder012_[k];
        out.insert(out.end(), face, face + 3);
    }
}

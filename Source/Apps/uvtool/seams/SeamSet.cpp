#include "seams/SeamSet.h"

namespace uvtool
{

SeamSet::SeamSet(std::span<const std::uint32_t> triangles, std::size_t vertexCount)
    : triangles_(triangles), edges_(triangles, vertexCount), edgeOfSide_(triangles.size()),
      isSeam_(edges_.size(), 0), seamsAt_(vertexCount, 0), isAtBorder_(vertexCount, 0)
{
    for (std::size_t e = 0; e < edges_.size(); ++e) {
        for (const std::uint32_t side : edges_[e])
            edgeOfSide_[side] = static_cast<std::uint32_t>(e);
        if (isBorder(e))
            for (const std::uint32_t vertex : ends(e))
                isAtBorder_[vertex] = 1;
    }
}

std::array<std::uint32_t, 2> SeamSet::ends(std::size_t edge) const
{
    const std::uint32_t side = edges_[edge].front();
    return {triangles_[side], triangles_[endCorner(side)]};
}

void SeamSet::mark(std::size_t edge, bool isSeam)
{
    if (this->isSeam(edge) == isSeam)
        return;
    isSeam_[edge] = isSeam ? 1 : 0;
    seamCount_ += isSeam ? 1 : std::size_t(-1);
    for (const std::uint32_t vertex : ends(edge))
        seamsAt_[vertex] += isSeam ? 1U : 0xFFFFFFFFU;
}

void SeamSet::markPairs(std::span<const unsigned int> pairs)
{
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
        const auto edge = findEdge(edges_, triangles_, pairs[i], pairs[i + 1]);
        if (edge && !isBorder(*edge))
            mark(*edge, true);
    }
}

std::vector<unsigned int> SeamSet::pairs() const
{
    std::vector<unsigned int> flat;
    for (std::size_t e = 0; e < edgeCount(); ++e)
        if (isSeam(e))
            for (const std::uint32_t vertex : ends(e))
                flat.push_back(vertex);
    return flat;
}

} // namespace uvtool

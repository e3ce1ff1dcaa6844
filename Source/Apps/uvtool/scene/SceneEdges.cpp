#include "scene/SceneEdges.h"

#include <algorithm>
#include <array>

namespace uvtool
{
namespace
{

using Ends = std::array<std::uint32_t, 2>;

Ends ordered(std::uint32_t a, std::uint32_t b)
{
    return {std::min(a, b), std::max(a, b)};
}

std::vector<std::uint32_t> compactTriangles(const SceneGeometry& scene,
                                            std::span<const std::uint32_t> compactOfVertex)
{
    std::vector<std::uint32_t> triangles;
    triangles.reserve(scene.triangles.size());
    for (const std::uint32_t vertex : scene.triangles)
        triangles.push_back(compactOfVertex[vertex]);
    return triangles;
}

} // namespace

SceneEdges::SceneEdges(const SceneGeometry& scene, std::span<const std::uint32_t> compactOfVertex,
                       std::size_t compactVertices)
    : compactOfVertex_(compactOfVertex.begin(), compactOfVertex.end()),
      triangles_(compactTriangles(scene, compactOfVertex)), groups_(triangles_, compactVertices)
{}

std::optional<std::size_t> SceneEdges::find(std::uint32_t a, std::uint32_t b) const
{
    return findEdge(groups_, triangles_, compactOfVertex_[a], compactOfVertex_[b]);
}

std::vector<char> SceneEdges::joinedSides() const
{
    std::vector<char> isJoined(triangles_.size(), 0);
    for (std::size_t e = 0; e < size(); ++e)
        if (!isBorder(e))
            for (const std::uint32_t side : sides(e))
                isJoined[side] = 1;
    return isJoined;
}

std::vector<unsigned int> vertexPairsOf(const SceneGeometry& scene, const SceneEdges& edges,
                                        std::span<const std::size_t> chosen)
{
    std::vector<unsigned int> pairs;
    std::vector<Ends> ofEdge;
    for (const std::size_t edge : chosen) {
        ofEdge.clear();
        for (const std::uint32_t side : edges.sides(edge))
            ofEdge.push_back(ordered(scene.triangles[side], scene.triangles[endCorner(side)]));
        std::sort(ofEdge.begin(), ofEdge.end());
        ofEdge.erase(std::unique(ofEdge.begin(), ofEdge.end()), ofEdge.end());
        for (const Ends& ends : ofEdge)
            pairs.insert(pairs.end(), ends.begin(), ends.end());
    }
    return pairs;
}

} // namespace uvtool

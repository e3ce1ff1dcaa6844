#include "scene/SeamPlaces.h"

#include "mesh/EqualValues.h"

#include <algorithm>
#include <array>
#include <utility>

namespace uvtool
{
namespace
{

/// A border edge by what tells its place: the numbers of the positions of its ends.
struct Border
{
    std::array<std::uint32_t, 2> ends;
    std::uint32_t side;
    std::int32_t island;
};

/// [vertex of the scene] a number that it shares with those at the same place
std::vector<std::uint32_t> positionNumbers(const SceneGeometry& scene)
{
    std::vector<Vec3f> positions;
    positions.reserve(scene.vertexCount);
    scene.forEachSurface([&positions](const osg::GeometryPtr& surface) {
        const osg::GeoPositionsPtr& property = surface->getPositions();
        for (unsigned int v = 0; v < property->getSize(); ++v) {
            const auto p = property->getValue(v);
            positions.push_back({p[0], p[1], p[2]});
        }
    });
    return numberEqualValues<Vec3f>(positions);
}

std::vector<Border> bordersByPlace(const SceneGeometry& scene, const SceneEdges& edges,
                                   const SceneIslands& found, const std::vector<char>& isChosen)
{
    const std::vector<std::uint32_t> placeOf = positionNumbers(scene);
    std::vector<Border> borders;
    for (std::size_t e = 0; e < edges.size(); ++e) {
        if (!edges.isBorder(e))
            continue;
        const std::uint32_t side = edges.sides(e).front();
        const std::int32_t island = found.islandOfTriangle[side / 3];
        if (isChosen[static_cast<std::size_t>(island)] == 0)
            continue;
        const auto [low, high] =
            std::minmax(placeOf[scene.triangles[side]], placeOf[scene.triangles[endCorner(side)]]);
        borders.push_back({{low, high}, side, island});
    }
    std::sort(borders.begin(), borders.end(), [](const Border& a, const Border& b) {
        return std::tie(a.ends, a.side) < std::tie(b.ends, b.side);
    });
    return borders;
}

void makeUnique(std::vector<std::size_t>& edges)
{
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
}

} // namespace

NamedEdges findNamedEdges(const SceneEdges& edges, std::span<const VertexPair> pairs)
{
    NamedEdges named;
    for (const VertexPair& pair : pairs) {
        const std::optional<std::size_t> edge = edges.find(pair[0], pair[1]);
        if (edge)
            (edges.isBorder(*edge) ? named.borders : named.joined).push_back(*edge);
        else
            ++named.notInMesh;
    }
    makeUnique(named.joined);
    makeUnique(named.borders);
    return named;
}

std::vector<std::uint32_t> touchingBorders(const SceneGeometry& scene, const SceneEdges& edges,
                                           const SceneIslands& found,
                                           const std::vector<char>& isChosen, bool otherIslandOnly)
{
    const std::vector<Border> borders = bordersByPlace(scene, edges, found, isChosen);
    std::vector<std::uint32_t> sides;
    for (auto first = borders.begin(); first != borders.end();) {
        const auto end = std::find_if(first, borders.end(), [&first](const Border& border) {
            return border.ends != first->ends;
        });
        const bool hasOther = std::any_of(
            first, end, [&first](const Border& border) { return border.island != first->island; });
        if (end - first > 1 && (hasOther || !otherIslandOnly))
            sides.push_back(first->side);
        first = end;
    }
    return sides;
}

std::vector<char> islandsOf(const SceneGeometry& scene, const SceneIslands& found,
                            std::span<const unsigned int> seeds)
{
    std::vector<char> isSeed(found.compactVertices, 0);
    for (const unsigned int seed : seeds)
        isSeed[found.compactOfVertex[seed]] = 1;
    std::vector<char> isChosen(found.islands.size(), 0);
    for (std::size_t i = 0; i < scene.triangles.size(); ++i)
        if (isSeed[found.compactOfVertex[scene.triangles[i]]] != 0)
            isChosen[static_cast<std::size_t>(found.islandOfTriangle[i / 3])] = 1;
    return isChosen;
}

} // namespace uvtool

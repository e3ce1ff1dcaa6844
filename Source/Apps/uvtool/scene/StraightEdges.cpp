#include "scene/StraightEdges.h"

#include "mesh/EdgeFile.h"
#include "scene/SeamPlaces.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace uvtool
{
namespace
{

std::vector<std::size_t> edgesOfFile(const SceneGeometry& scene, const SceneEdges& edges,
                                     const std::optional<std::filesystem::path>& file,
                                     std::size_t& notInMesh)
{
    if (!file)
        return {};
    const NamedEdges named = findNamedEdges(edges, readEdgeFile(*file, scene.vertexCount));
    notInMesh += named.notInMesh;
    std::vector<std::size_t> all;
    std::merge(named.joined.begin(), named.joined.end(), named.borders.begin(), named.borders.end(),
               std::back_inserter(all));
    return all;
}

std::vector<std::uint32_t> sidesOf(const SceneEdges& edges, const std::vector<std::size_t>& chosen)
{
    std::vector<std::uint32_t> sides;
    for (const std::size_t edge : chosen)
        sides.insert(sides.end(), edges.sides(edge).begin(), edges.sides(edge).end());
    std::sort(sides.begin(), sides.end());
    return sides;
}

std::vector<std::uint32_t> moved(const std::vector<std::uint32_t>& sides,
                                 const SceneGeometry& scene,
                                 const std::vector<std::uint32_t>& firstTriangleOf)
{
    std::vector<std::uint32_t> all;
    for (const std::uint32_t side : sides) {
        const TriangleSource& source = scene.sourceOfTriangle[side / 3];
        all.push_back(3 * (firstTriangleOf[source.geometry] + source.triangle) + side % 3);
    }
    return all;
}

} // namespace

StraightEdges findStraightEdges(const SceneGeometry& scene, const SceneEdges& edges,
                                const StraightOptions& options)
{
    StraightEdges straight;
    const std::vector<std::size_t> horizontal =
        edgesOfFile(scene, edges, options.horizontal, straight.notInMesh);
    straight.vertical = edgesOfFile(scene, edges, options.vertical, straight.notInMesh);
    std::set_difference(horizontal.begin(), horizontal.end(), straight.vertical.begin(),
                        straight.vertical.end(), std::back_inserter(straight.horizontal));
    straight.inBoth = horizontal.size() - straight.horizontal.size();
    return straight;
}

HeldSides sidesAlong(const SceneEdges& edges, const StraightEdges& straight)
{
    return {sidesOf(edges, straight.horizontal), sidesOf(edges, straight.vertical)};
}

HeldSides sidesInDocument(const Document& document, std::span<const std::size_t> numbers,
                          const SceneGeometry& scene, const HeldSides& held)
{
    std::vector<std::uint32_t> firstTriangleOf(document.geometries.size(), 0);
    std::uint32_t next = 0;
    for (const std::size_t number : numbers) {
        firstTriangleOf[number] = next;
        next += static_cast<std::uint32_t>(document.geometries[number].triangleCount());
    }
    return {moved(held.horizontal, scene, firstTriangleOf),
            moved(held.vertical, scene, firstTriangleOf)};
}

} // namespace uvtool

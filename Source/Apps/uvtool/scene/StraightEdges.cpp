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

} // namespace uvtool

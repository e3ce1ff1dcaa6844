#include "scene/PathOperation.h"

#include "cli/ExitStatus.h"
#include "solver/LibraryScope.h"

#include "UVUtils/model/kyUVUtils.h"

#include <array>
#include <optional>
#include <string>

namespace uvtool
{
namespace
{

[[noreturn]] void refuse(ExitStatus status, const std::string& why)
{
    throw CommandError(status, why);
}

std::string nameOf(unsigned int vertex)
{
    return "vertex " + std::to_string(vertex);
}

bool lieInOnePlace(const PathGround& ground, unsigned int a, unsigned int b)
{
    return ground.found.compactOfVertex[a] == ground.found.compactOfVertex[b];
}

/// [compact vertex] 1 for those of border edges.
std::vector<char> borderVertices(const PathGround& ground)
{
    std::vector<char> isOnBorder(ground.found.compactVertices, 0);
    for (std::size_t e = 0; e < ground.edges.size(); ++e) {
        if (!ground.edges.isBorder(e))
            continue;
        const std::uint32_t side = ground.edges.sides(e).front();
        for (const std::uint32_t corner : {side, endCorner(side)})
            isOnBorder[ground.found.compactOfVertex[ground.scene.triangles[corner]]] = 1;
    }
    return isOnBorder;
}

void throwUnlessOnBorders(const PathGround& ground, const std::vector<unsigned int>& vertices)
{
    const std::vector<char> isOnBorder = borderVertices(ground);
    for (const unsigned int vertex : vertices)
        if (isOnBorder[ground.found.compactOfVertex[vertex]] == 0)
            refuse(WrongUsage, "--along-borders: " + nameOf(vertex) +
                                   " is on no border; pick another one, or leave the option out");
}

/// One leg at a time, so that one without a path can be named.
std::vector<unsigned int> shortestPath(const PathGround& ground, const PathOptions& options,
                                       kyUVTypes::UVSet set)
{
    if (options.alongBorders)
        throwUnlessOnBorders(ground, options.vertices);
    std::vector<unsigned int> path;
    for (std::size_t i = 1; i < options.vertices.size(); ++i) {
        const std::array<unsigned int, 2> ends{options.vertices[i - 1], options.vertices[i]};
        const std::string names = nameOf(ends[0]) + " and " + nameOf(ends[1]);
        if (lieInOnePlace(ground, ends[0], ends[1]))
            refuse(WrongUsage, "--vertices: " + names + " lie in one place; leave out one of them");
        FlatEdgeList leg;
        kyUVUtils::findEdgesShortestPath(ground.scene.core(), ground.scene.node, set, ends.data(),
                                         2, options.alongBorders, leg);
        if (leg.empty() && options.alongBorders)
            refuse(Failed, "no border leads from " + nameOf(ends[0]) + " to " + nameOf(ends[1]) +
                               "; name vertices of one border, or leave out --along-borders");
        if (leg.empty())
            refuse(Failed, "there is no path between " + names +
                               ": no island reaches both; name a vertex on the seam in between, or "
                               "take surfaces that meet as one with --shell");
        path.insert(path.end(), leg.begin(), leg.end());
    }
    return path;
}

std::vector<unsigned int> contiguousEdges(const PathGround& ground, const PathOptions& options,
                                          kyUVTypes::UVSet set)
{
    const unsigned int a = options.edge[0];
    const unsigned int b = options.edge[1];
    const std::optional<std::size_t> edge = ground.edges.find(a, b);
    if (!edge)
        refuse(WrongUsage,
               "--edge: no triangle has an edge between " + nameOf(a) + " and " + nameOf(b));
    if (options.bordersOnly && !ground.edges.isBorder(*edge))
        refuse(Failed, "--borders-only: the edge between " + nameOf(a) + " and " + nameOf(b) +
                           " is inside of an island; name one on a border, or leave the option "
                           "out");
    return kyUVUtils::findContiguousEdges(
        ground.scene.node, set, Edge(a, b), static_cast<float>(options.surfaceAngle),
        static_cast<float>(options.edgeAngle), options.bordersOnly, options.stopAtBorders);
}

} // namespace

std::vector<unsigned int> findPath(const PathGround& ground, const PathOptions& options,
                                   std::size_t slot, Console& console)
{
    LibraryLog log;
    const LibraryScope scope(console, log);
    const auto set = static_cast<kyUVTypes::UVSet>(slot);
    return options.edge.empty() ? shortestPath(ground, options, set)
                                : contiguousEdges(ground, options, set);
}

} // namespace uvtool

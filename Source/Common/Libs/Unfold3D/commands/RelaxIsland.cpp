#include "Unfold3D/commands/RelaxIsland.h"

#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/commands/IslandFlattener.h"
#include "Unfold3D/commands/IslandRelaxer.h"
#include "Unfold3D/commands/PinnedLines.h"
#include "Unfold3D/layout/LayoutFrame.h"
#include "Unfold3D/mesh/ClosedSheets.h"
#include "Unfold3D/mesh/HalfEdges.h"
#include "Unfold3D/start/BorderLoops.h"

#include <algorithm>
#include <utility>

namespace unfold3d
{

namespace
{

/// A layout of nothing but angles has no size; of the many with the best angles the one with the
/// least distorted lengths is taken by giving them this share.
constexpr double leastLengths = 1e-3;

/// What of an island can be laid flat.
struct FlatPart
{
    IslandSurface surface;
    Obstacle obstacle;   ///< of the surface
    ClosedSheets closed; ///< what had to be left out for it
};

Obstacle obstacleOf(const IslandSurface& surface)
{
    if (surface.obstacle != Obstacle::None)
        return surface.obstacle;
    const IslandMesh& mesh = surface.mesh;
    return findBorderLoops(mesh, pairHalfEdges(mesh.triangles, mesh.vertexCount())).obstacle;
}

FlatPart takeFlatPart(const Session& session, int island, const RunControl& control)
{
    FlatPart part{takeIsland(session.mesh, session.islands, island, control), Obstacle::None, {}};
    control.checkpoint();
    part.obstacle = obstacleOf(part.surface);
    control.checkpoint();
    if (part.obstacle != Obstacle::Closed || !hasLayout(session, part.surface.vertices))
        return part;
    FlatPart open = part;
    open.closed = leaveOutClosedSheets(open.surface);
    if (!open.surface.triangles.empty())
        open.obstacle = obstacleOf(open.surface);
    return open.obstacle == Obstacle::None ? open : part;
}

/// Winds the triangles counter-clockwise in the layout, as far as they agree.
void windAsItLies(std::span<const Vec2> uv, std::span<const char> isFixed, IslandMesh& mesh)
{
    if (isMirrored(mesh, uv, isFixed))
        for (auto& [a, b, c] : mesh.triangles)
            std::swap(b, c);
}

/// [vertex of the part] empty when all move.
std::vector<char> fixedVertices(const FlatPart& part, std::span<const char> isChosen)
{
    std::vector<char> isFixed = part.closed.isHinge;
    isFixed.resize(part.surface.vertices.size(), 0);
    for (std::size_t v = 0; v < isFixed.size(); ++v)
        if (!isChosen[static_cast<std::size_t>(part.surface.vertices[v])])
            isFixed[v] = 1;
    if (std::find(isFixed.begin(), isFixed.end(), 1) == isFixed.end())
        isFixed.clear();
    return isFixed;
}

/// Vertices of the island that aren't of the part and have to stay.
std::vector<int> stayingBeside(const FlatPart& part, const Islands& islands, int island,
                               std::span<const char> isChosen)
{
    std::vector<int> staying = part.closed.vertices;
    for (const int v : islands.vertices[island])
        if (islands.anchor[static_cast<std::size_t>(v)] != v &&
            !isChosen[static_cast<std::size_t>(v)])
            staying.push_back(v);
    return staying;
}

bool isPoint(std::span<const Vec2> uv)
{
    return std::all_of(uv.begin(), uv.end(), [&](Vec2 p) { return p == uv.front(); });
}

/// UVs that repeat the positions in space are those of a mesh without any, unless they are a
/// layout, since the surface lies in the plane.
bool wasMapped(const Session& session, const std::vector<int>& vertices, std::span<const Vec2> uv)
{
    const bool isFlat = std::all_of(vertices.begin(), vertices.end(), [&](int v) {
        return session.mesh.positions[static_cast<std::size_t>(v)].z == 0.0;
    });
    return (isFlat || hasLayout(session, vertices)) && !isPoint(uv);
}

/// The triangles of a surface, each wound as it was imported.
std::vector<Triangle> trianglesAsImported(const Session& session, const IslandSurface& surface)
{
    std::vector<Triangle> triangles = surface.mesh.triangles;
    for (std::size_t t = 0; t < triangles.size(); ++t) {
        auto& [a, b, c] = triangles[t];
        const auto imported = static_cast<std::size_t>(surface.triangles[t]);
        if (surface.vertices[static_cast<std::size_t>(b)] != session.mesh.triangles[imported][1])
            std::swap(b, c);
    }
    return triangles;
}

/// Those that turn against most of the layout's area.
std::size_t countFlips(std::vector<Triangle> triangles, std::span<const Vec2> uv)
{
    if (layoutArea(triangles, uv).signedSum < 0.0)
        for (auto& [a, b, c] : triangles)
            std::swap(b, c);
    return flippedTriangles(triangles, uv).size();
}

/// Neighbours that face opposite sides are wound alike to be relaxed. Where they lie on each other,
/// that turns one of them over.
void keepSides(const Session& session, const IslandSurface& surface, std::span<const Vec2> before,
               IslandLayout& result)
{
    const std::vector<Triangle> triangles = trianglesAsImported(session, surface);
    std::size_t turned = 0;
    for (std::size_t t = 0; t < triangles.size(); ++t)
        turned += triangles[t] != surface.mesh.triangles[t];
    const bool faceOneSide = turned == 0 || turned == triangles.size();
    if (faceOneSide || countFlips(triangles, result.uv) <= countFlips(triangles, before))
        return;
    result.isUnchanged = true;
    result.warnings.assign(1, {"UVs are kept, since triangles that face opposite sides lie on each "
                               "other. Turn them to one side first."});
}

FlattenOptions flattenOptions(const RelaxOptions& options)
{
    FlattenOptions flatten;
    flatten.iterations = options.iterations;
    flatten.preventBorderCrossings = options.preventBorderCrossings;
    flatten.roomSpace = options.roomSpace;
    flatten.lengths = std::max(options.lengths, leastLengths);
    return flatten;
}

/// An island that never was mapped.
void unfoldNew(const IslandSurface& surface, const FlattenOptions& flatten,
               const RunControl& control, const std::function<void(double)>& progress,
               IslandLayout& result)
{
    FlattenAttempt best = IslandFlattener(surface.mesh, {}, flatten, control, progress).run();
    result.method = best.methods();
    result.warnings = std::move(best.report.warnings);
    result.uv = std::move(best.uv);
    for (Vec2& p : result.uv)
        p = surface.size * p;
}

} // namespace

IslandLayout relaxIsland(const Session& session, int island, std::span<const char> isChosen,
                         const RelaxOptions& options, const RunControl& control,
                         const std::function<void(double)>& progress)
{
    IslandLayout result;
    FlatPart part = takeFlatPart(session, island, control);
    control.checkpoint();
    result.obstacle = part.obstacle;
    if (result.obstacle != Obstacle::None)
        return result;

    IslandSurface& surface = part.surface;
    std::vector<Vec2> before = layoutOf(session, surface.vertices);
    result.hadLayout = wasMapped(session, surface.vertices, before);
    result.isFixed = fixedVertices(part, isChosen);
    result.staying = stayingBeside(part, session.islands, island, isChosen);
    FlattenOptions flatten = flattenOptions(options);
    flatten.straight = pinnedLines(session, surface);
    flatten.isFixed = result.isFixed;
    const bool isAllFixed =
        !result.isFixed.empty() &&
        std::find(result.isFixed.begin(), result.isFixed.end(), 0) == result.isFixed.end();
    const bool isLeft = options.iterations == 0 || options.power == 0.0;
    if (!part.closed.vertices.empty())
        result.warnings.emplace_back("A closed part that touches the rest in single vertices "
                                     "keeps its UVs. Cut a seam into it that opens it.");
    if (isAllFixed || (isLeft && flatten.straight.empty()))
        result.isUnchanged = true;
    else if (!result.hadLayout && result.isFixed.empty())
        unfoldNew(surface, flatten, control, progress, result);
    else {
        result.hadLayout = true;
        windAsItLies(before, result.isFixed, surface.mesh);
        IslandRelaxer(surface, before, flatten, options, control, progress).run(result);
        if (options.preventFlips)
            keepSides(session, surface, before, result);
    }
    result.vertices = std::move(surface.vertices);
    return result;
}

} // namespace unfold3d

#include "Unfold3D/commands/UnfoldIsland.h"

#include "Unfold3D/base/DisjointSets.h"
#include "Unfold3D/base/ExactPredicates.h"
#include "Unfold3D/layout/Placement.h"
#include "Unfold3D/mesh/IslandSurface.h"
#include "Unfold3D/start/FlatStart.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// UVs that only repeat the positions in space say nothing about a layout.
bool hasLayout(const Session& session, const std::vector<int>& vertices)
{
    return std::any_of(vertices.begin(), vertices.end(), [&](int vertex) {
        const auto v = static_cast<std::size_t>(vertex);
        const Vec3& p = session.mesh.positions[v];
        return session.uvs[v].x != p.x || session.uvs[v].y != p.y || session.w[v] != p.z;
    });
}

std::vector<Vec2> oldLayout(const Session& session, const std::vector<int>& vertices)
{
    std::vector<Vec2> old;
    old.reserve(vertices.size());
    for (const int v : vertices)
        old.push_back(session.uvs[static_cast<std::size_t>(v)]);
    return old;
}

/// Chains of edges with one pin become one line each.
void collectLines(const Session& session, const IslandSurface& surface, EdgePin pin,
                  std::vector<StraightLine>& lines)
{
    DisjointSets chains(surface.mesh.vertexCount());
    std::vector<char> isPinned(surface.vertices.size(), 0);
    for (std::size_t t = 0; t < surface.triangles.size(); ++t) {
        const auto imported = static_cast<std::size_t>(surface.triangles[t]);
        const Triangle& corner = surface.mesh.triangles[t];
        for (const int edge : session.edges->ofTriangle[imported]) {
            if (session.pins[static_cast<std::size_t>(edge)] != pin)
                continue;
            int ends[2] = {-1, -1};
            for (const int v : corner) {
                const int global = surface.vertices[static_cast<std::size_t>(v)];
                const auto& named = session.edges->vertices[static_cast<std::size_t>(edge)];
                for (std::size_t k = 0; k < 2; ++k)
                    if (named[k] == global)
                        ends[k] = v;
            }
            chains.join(ends[0], ends[1]);
            isPinned[static_cast<std::size_t>(ends[0])] = 1;
            isPinned[static_cast<std::size_t>(ends[1])] = 1;
        }
    }
    std::vector<int> lineOfRoot(surface.vertices.size(), -1);
    for (int v = 0; v < surface.mesh.vertexCount(); ++v) {
        if (!isPinned[static_cast<std::size_t>(v)])
            continue;
        int& line = lineOfRoot[static_cast<std::size_t>(chains.find(v))];
        if (line < 0) {
            line = static_cast<int>(lines.size());
            lines.push_back({pin == EdgePin::Horizontal, {}});
        }
        lines[static_cast<std::size_t>(line)].vertices.push_back(v);
    }
}

std::vector<StraightLine> straightLines(const Session& session, const IslandSurface& surface)
{
    std::vector<StraightLine> lines;
    if (session.pins.empty())
        return lines;
    collectLines(session, surface, EdgePin::Horizontal, lines);
    collectLines(session, surface, EdgePin::Vertical, lines);
    return lines;
}

bool isFlipFree(const std::vector<Triangle>& triangles, const std::vector<Vec2>& uv)
{
    const auto isFinite = [](Vec2 p) { return std::isfinite(p.x) && std::isfinite(p.y); };
    return std::all_of(uv.begin(), uv.end(), isFinite) &&
           std::all_of(triangles.begin(), triangles.end(), [&](const Triangle& t) {
               return orient2d(uv[static_cast<std::size_t>(t[0])],
                               uv[static_cast<std::size_t>(t[1])],
                               uv[static_cast<std::size_t>(t[2])]) > 0;
           });
}

} // namespace

IslandUnfold unfoldIsland(const Session& session, int island, const FlattenOptions& options,
                          const RunControl& control, const std::function<void(double)>& progress)
{
    IslandUnfold result;
    IslandSurface surface = takeIsland(session.mesh, session.islands, island);
    result.obstacle = surface.obstacle;
    if (result.obstacle != Obstacle::None)
        return result;
    control.checkpoint();

    FlatStart start = flatStart(surface.mesh, control);
    result.obstacle = start.obstacle;
    if (result.obstacle != Obstacle::None)
        return result;
    progress(0.1);

    result.hadLayout = hasLayout(session, surface.vertices);
    const std::vector<Vec2> old =
        result.hadLayout ? oldLayout(session, surface.vertices) : std::vector<Vec2>();
    FlattenOptions own = options;
    own.straight = straightLines(session, surface);
    turnToExpectedSide(surface.mesh, old, start.uv);

    FlattenResult flat = flatten(surface.mesh, start.uv, own, control,
                                 [&](double fraction) { progress(0.1 + 0.9 * fraction); });
    result.method = std::string(nameOf(start.method)) + " start";
    result.warnings = std::move(flat.report.warnings);
    if (isFlipFree(surface.mesh.triangles, flat.uv)) {
        result.uv = std::move(flat.uv);
        if (!flat.report.method.empty())
            result.method += ", " + flat.report.method;
    } else {
        result.uv = std::move(start.uv);
        result.warnings.emplace_back("The flattening failed; the layout is only a first one, "
                                     "without flipped triangles but distorted.");
    }
    if (own.straight.empty())
        turnToExpectedSide(surface.mesh, old, result.uv);
    for (Vec2& p : result.uv)
        p = surface.size * p;
    result.vertices = std::move(surface.vertices);
    result.triangles = std::move(surface.mesh.triangles);
    return result;
}

} // namespace unfold3d

#include "Unfold3D/start/FlatStart.h"

#include "Unfold3D/base/ExactPredicates.h"
#include "Unfold3D/base/RestTriangle.h"
#include "Unfold3D/mesh/HalfEdges.h"
#include "Unfold3D/start/BorderLoops.h"
#include "Unfold3D/start/ConvexMap.h"

#include <algorithm>

namespace unfold3d
{

namespace
{

using Springs = std::vector<std::array<double, 3>>;

/// Half the cotangent of the angle at each corner; for the triangles that fill the disk, the mean
/// of a regular mesh.
Springs cotangentSprings(const IslandMesh& mesh, const FilledDisk& disk)
{
    Springs springs(disk.triangles.size(), {0.5, 0.5, 0.5});
    for (int t = 0; t < mesh.triangleCount(); ++t) {
        const RestTriangle rest = restTriangle(mesh, t);
        springs[static_cast<std::size_t>(t)] = {
            0.5 * rest.cx / rest.cy, 0.5 * (rest.bx - rest.cx) / rest.cy,
            0.5 * (rest.cx * (rest.cx - rest.bx) + rest.cy * rest.cy) / (rest.bx * rest.cy)};
    }
    return springs;
}

bool isEmbedding(const FilledDisk& disk, const std::vector<Vec2>& uv)
{
    return std::all_of(disk.triangles.begin(), disk.triangles.end(), [&](const Triangle& t) {
        return orient2d(uv[static_cast<std::size_t>(t[0])], uv[static_cast<std::size_t>(t[1])],
                        uv[static_cast<std::size_t>(t[2])]) > 0;
    });
}

/// Stiffness of the springs that take the place of negative ones, beside about 1 of most.
constexpr double weakSpring = 1e-2;

struct Attempt
{
    FlatStart::Method method;
    std::optional<double> leastSpring;
};

constexpr Attempt attempts[] = {
    {FlatStart::Harmonic, std::nullopt},
    {FlatStart::ClampedSprings, weakSpring},
};

} // namespace

const char* nameOf(FlatStart::Method method)
{
    switch (method) {
    case FlatStart::Harmonic:
        return "harmonic";
    case FlatStart::ClampedSprings:
        return "clamped harmonic";
    }
    return "";
}

FlatStart flatStart(const IslandMesh& mesh, const RunControl& control)
{
    FlatStart start;
    const HalfEdges edges = pairHalfEdges(mesh.triangles, mesh.vertexCount());
    const BorderLoops border = findBorderLoops(mesh, edges);
    start.obstacle = border.obstacle;
    if (start.obstacle != Obstacle::None)
        return start;

    const FilledDisk disk = fillToDisk(mesh, border.loops);
    control.checkpoint();
    ConvexMapper mapper(disk);
    const Springs springs = cotangentSprings(mesh, disk);
    for (const Attempt& attempt : attempts) {
        std::optional<std::vector<Vec2>> uv = mapper.map(springs, attempt.leastSpring, control);
        if (!uv || !isEmbedding(disk, *uv))
            continue;
        uv->resize(mesh.positions.size());
        start.uv = std::move(*uv);
        start.method = attempt.method;
        return start;
    }
    return start;
}

} // namespace unfold3d

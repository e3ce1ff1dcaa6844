#include "Unfold3D/start/FlatStart.h"

#include "Unfold3D/base/ExactPredicates.h"
#include "Unfold3D/base/RestTriangle.h"
#include "Unfold3D/mesh/HalfEdges.h"
#include "Unfold3D/start/BorderLoops.h"
#include "Unfold3D/start/ConvexMap.h"
#include "Unfold3D/start/GridDrawing.h"
#include "Unfold3D/start/StartDistortion.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace unfold3d
{

namespace
{

/// A start with less distortion is taken at once: looking for a better one costs more than it
/// saves.
constexpr double goodDistortion = 300.0;
/// Stiffness of the springs that take the place of negative ones, beside about 1 of most.
constexpr double weakSpring = 1e-2;
/// Rounds of balancing, which ends earlier when one brings down the distortion by less than half.
constexpr int maxBalancings = 3;
constexpr double worthwhileShare = 0.5;

using Springs = std::vector<std::array<double, 3>>;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Half the cotangent of the angle at each corner; for the triangles that fill the disk, the mean
/// of a regular mesh.
Springs cotangentSprings(const IslandMesh& mesh, const FilledDisk& disk)
{
    Springs springs(disk.triangles.size(), {0.5, 0.5, 0.5});
    for (int t = 0; t < mesh.triangleCount(); ++t) {
        const RestTriangle rest = restTriangle(mesh, t);
        springs[at(t)] = {0.5 * rest.cx / rest.cy, 0.5 * (rest.bx - rest.cx) / rest.cy,
                          0.5 * (rest.cx * (rest.cx - rest.bx) + rest.cy * rest.cy) /
                              (rest.bx * rest.cy)};
    }
    return springs;
}

bool isEmbedding(const FilledDisk& disk, const std::vector<Vec2>& uv)
{
    return std::all_of(disk.triangles.begin(), disk.triangles.end(), [&](const Triangle& t) {
        return orient2d(uv[at(t[0])], uv[at(t[1])], uv[at(t[2])]) > 0;
    });
}

/// Softens the springs around vertices whose triangles came out small, so that what lies outside
/// pulls them open: the factor of an edge falls with the linear scale at both its ends (after
/// Yoshizawa, Belyaev and Seidel, "A fast and simple stretch-minimizing mesh parameterization",
/// 2004, with factors on both ends, which keep the springs symmetric).
void soften(const IslandMesh& mesh, const std::vector<Vec2>& uv, std::vector<double>& factors)
{
    std::vector<double> restArea(mesh.positions.size(), 0.0);
    std::vector<double> flatArea(mesh.positions.size(), 0.0);
    for (int t = 0; t < mesh.triangleCount(); ++t) {
        const auto& [a, b, c] = mesh.triangles[at(t)];
        const double rest = restTriangle(mesh, t).area();
        const double flat = 0.5 * std::abs(doubleArea(uv[at(a)], uv[at(b)], uv[at(c)]));
        for (const int v : {a, b, c}) {
            restArea[at(v)] += rest;
            flatArea[at(v)] += flat;
        }
    }
    for (std::size_t v = 0; v < restArea.size(); ++v)
        factors[v] *=
            std::sqrt(std::max(flatArea[v] / restArea[v], std::numeric_limits<double>::epsilon()));
}

/// Finds the start of one island, method by method.
class StartSearch
{
public:
    StartSearch(const IslandMesh& mesh, const FilledDisk& disk, const RunControl& control)
        : mesh_(mesh), disk_(disk), control_(control), mapper_(disk),
          springs_(cotangentSprings(mesh, disk))
    {}

    FlatStart run()
    {
        if (const auto uv = mapper_.map({springs_, std::nullopt, {}}, control_))
            offer(FlatStart::Harmonic, *uv);
        if (leastDistortion_ < goodDistortion)
            return std::move(best_);
        tryBalanced();
        offer(FlatStart::Grid, drawOnGrid(disk_));
        return std::move(best_);
    }

private:
    /// Keeps a map when it is the best so far; returns its distortion, infinite when it won't do.
    double offer(FlatStart::Method method, std::vector<Vec2> uv)
    {
        if (!isEmbedding(disk_, uv))
            return std::numeric_limits<double>::infinity();
        uv.resize(mesh_.positions.size());
        const double distortion = startDistortion(mesh_, uv);
        if (best_.uv.empty() || distortion < leastDistortion_) {
            leastDistortion_ = distortion;
            best_.method = method;
            best_.uv = std::move(uv);
        }
        return distortion;
    }

    void tryBalanced()
    {
        std::vector<double> factors(at(disk_.vertexCount), 1.0);
        double before = std::numeric_limits<double>::infinity();
        for (int round = 0; round <= maxBalancings; ++round) {
            const auto uv = mapper_.map({springs_, weakSpring, factors}, control_);
            if (!uv)
                return;
            const double distortion = offer(FlatStart::Balanced, *uv);
            if (distortion > worthwhileShare * before)
                return;
            before = distortion;
            soften(mesh_, *uv, factors);
        }
    }

    const IslandMesh& mesh_;
    const FilledDisk& disk_;
    const RunControl& control_;
    ConvexMapper mapper_;
    Springs springs_;
    FlatStart best_;
    double leastDistortion_ = std::numeric_limits<double>::infinity();
};

} // namespace

const char* nameOf(FlatStart::Method method)
{
    switch (method) {
    case FlatStart::Harmonic:
        return "harmonic";
    case FlatStart::Balanced:
        return "balanced";
    case FlatStart::Grid:
        return "grid";
    }
    return "";
}

FlatStart flatStart(const IslandMesh& mesh, const RunControl& control)
{
    const HalfEdges edges = pairHalfEdges(mesh.triangles, mesh.vertexCount());
    const BorderLoops border = findBorderLoops(mesh, edges);
    if (border.obstacle != Obstacle::None) {
        FlatStart none;
        none.obstacle = border.obstacle;
        return none;
    }
    const FilledDisk disk = fillToDisk(mesh, border.loops);
    control.checkpoint();
    return StartSearch(mesh, disk, control).run();
}

} // namespace unfold3d

#include "Unfold3D/start/FlatStart.h"

#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/base/RestTriangle.h"
#include "Unfold3D/mesh/HalfEdges.h"
#include "Unfold3D/parameterisation/Flatten.h"
#include "Unfold3D/start/BorderLoops.h"
#include "Unfold3D/start/FlatProjection.h"
#include "Unfold3D/start/GridDrawing.h"
#include "Unfold3D/start/StartDistortion.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace unfold3d
{

namespace
{

/// A start with less distortion is taken at once: looking for a better one costs more than it
/// saves.
constexpr double goodDistortion = 300.0;
/// Least stiffness of a balanced spring, beside about 1 of most: much weaker ones let the triangles
/// beside them shrink too far.
constexpr double weakSpring = 0.5;
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

} // namespace

const char* nameOf(FlatStart::Method method)
{
    switch (method) {
    case FlatStart::Projected:
        return "projected";
    case FlatStart::Harmonic:
        return "harmonic";
    case FlatStart::Balanced:
        return "balanced";
    case FlatStart::Filled:
        return "filled";
    case FlatStart::Grid:
        return "grid";
    }
    return "";
}

FlatStartFinder::FlatStartFinder(const IslandMesh& mesh, const RunControl& control)
    : mesh_(mesh), control_(control)
{
    const HalfEdges edges = pairHalfEdges(mesh.triangles, mesh.vertexCount());
    control.checkpoint();
    const BorderLoops border = findBorderLoops(mesh, edges);
    control.checkpoint();
    obstacle_ = border.obstacle;
    if (obstacle_ == Obstacle::None)
        disk_ = fillToDisk(mesh, border.loops);
}

std::optional<FlatStart> FlatStartFinder::next()
{
    if (obstacle_ != Obstacle::None)
        return std::nullopt;
    constexpr int stageCount = 5;
    while (stage_ < stageCount) {
        control_.checkpoint();
        std::optional<FlatStart> start;
        switch (stage_++) {
        case 0:
            start = tryProjected();
            break;
        case 1:
            start = tryHarmonic();
            break;
        case 2:
            start = tryFilled();
            break;
        case 3:
            start = trySprung();
            break;
        default:
            start = drawGrid();
        }
        if (start)
            return start;
    }
    return std::nullopt;
}

std::optional<FlatStart> FlatStartFinder::measured(FlatStart::Method method,
                                                   std::vector<Vec2> uv) const
{
    if (!isFlipFree(disk_.triangles, uv))
        return std::nullopt;
    const double distortion = startDistortion(mesh_, uv);
    return FlatStart{method, distortion, std::move(uv)};
}

FlatStart FlatStartFinder::withoutFilling(FlatStart ofDisk) const
{
    ofDisk.uv.resize(mesh_.positions.size());
    return ofDisk;
}

std::optional<FlatStart> FlatStartFinder::tryProjected() const
{
    std::optional<std::vector<Vec2>> uv = flatProjection(mesh_);
    if (!uv)
        return std::nullopt;
    control_.checkpoint();
    const double distortion = startDistortion(mesh_, *uv);
    if (!(distortion < goodDistortion))
        return std::nullopt;
    return FlatStart{FlatStart::Projected, distortion, std::move(*uv)};
}

std::optional<FlatStart> FlatStartFinder::tryHarmonic()
{
    springs_ = cotangentSprings(mesh_, disk_);
    control_.checkpoint();
    mapper_.emplace(disk_, control_);
    for (const int v : mapper_->eliminationOrder())
        if (v < mesh_.vertexCount())
            eliminationOrder_.push_back(v);
    control_.checkpoint();
    std::optional<std::vector<Vec2>> uv = mapper_->map({springs_, std::nullopt, {}}, control_);
    control_.checkpoint();
    if (uv)
        sprung_ = measured(FlatStart::Harmonic, std::move(*uv));
    if (sprung_ && sprung_->distortion < goodDistortion)
        return withoutFilling(*sprung_);
    return std::nullopt;
}

/// Looks for a better map by springs than the harmonic one.
void FlatStartFinder::balance()
{
    std::vector<double> factors(at(disk_.vertexCount), 1.0);
    double before = std::numeric_limits<double>::infinity();
    for (int round = 0; round <= maxBalancings; ++round) {
        const auto uv = mapper_->map({springs_, weakSpring, factors}, control_);
        if (!uv)
            break;
        std::optional<FlatStart> start = measured(FlatStart::Balanced, *uv);
        const double distortion =
            start ? start->distortion : std::numeric_limits<double>::infinity();
        if (start && !(sprung_ && sprung_->distortion <= distortion))
            sprung_ = std::move(start);
        if (distortion > worthwhileShare * before)
            break;
        before = distortion;
        soften(mesh_, *uv, factors);
    }
    mapper_.reset(); // not needed any more, and large
}

std::optional<FlatStart> FlatStartFinder::tryFilled()
{
    balance();
    if (!disk_.hasHoles(mesh_))
        return std::nullopt;
    // With its holes filled, only the outer border can get in its own way.
    std::vector<Vec2> uv = sprung_ ? sprung_->uv : drawOnGrid(disk_);
    uv.resize(disk_.filled.positions.size());
    FlattenResult flat = flatten(disk_.filled, std::move(uv), {}, control_, {});
    if (flat.report.borderCrossings != 0 || !isFlipFree(disk_.filled.triangles, flat.uv))
        return std::nullopt;
    flat.uv.resize(mesh_.positions.size());
    const double distortion = startDistortion(mesh_, flat.uv);
    return FlatStart{FlatStart::Filled, distortion, std::move(flat.uv)};
}

std::optional<FlatStart> FlatStartFinder::trySprung()
{
    const bool wasHandedOut =
        sprung_ && sprung_->method == FlatStart::Harmonic && sprung_->distortion < goodDistortion;
    if (!sprung_ || wasHandedOut)
        return std::nullopt;
    return withoutFilling(std::move(*sprung_));
}

FlatStart FlatStartFinder::drawGrid() const
{
    std::vector<Vec2> uv = drawOnGrid(disk_);
    const double distortion = startDistortion(mesh_, uv);
    return withoutFilling({FlatStart::Grid, distortion, std::move(uv)});
}

FlatStart flatStart(const IslandMesh& mesh, const RunControl& control)
{
    return *FlatStartFinder(mesh, control).next();
}

} // namespace unfold3d

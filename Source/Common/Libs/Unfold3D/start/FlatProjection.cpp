#include "Unfold3D/start/FlatProjection.h"

#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/parameterisation/Border.h"
#include "Unfold3D/parameterisation/BorderCrossings.h"

#include <cmath>

namespace unfold3d
{

namespace
{

Vec3 positionOf(const IslandMesh& mesh, int v)
{
    return mesh.positions[static_cast<std::size_t>(v)];
}

Vec3 meanNormal(const IslandMesh& mesh)
{
    Vec3 sum;
    for (const auto& [a, b, c] : mesh.triangles)
        sum = sum + cross(positionOf(mesh, b) - positionOf(mesh, a),
                          positionOf(mesh, c) - positionOf(mesh, a));
    return sum;
}

Vec3 unit(Vec3 v)
{
    return (1.0 / length(v)) * v;
}

/// The layout of an island of unit area on a grid as fine as the narrowest gap that is one.
std::vector<Vec2> snapped(const std::vector<Vec2>& uv)
{
    constexpr double narrowestGap = 1e-6;
    std::vector<Vec2> result;
    result.reserve(uv.size());
    for (const Vec2 p : uv)
        result.push_back({std::round(p.x / narrowestGap), std::round(p.y / narrowestGap)});
    return result;
}

} // namespace

std::optional<std::vector<Vec2>> flatProjection(const IslandMesh& mesh)
{
    const Vec3 normal = meanNormal(mesh);
    if (!(length(normal) > 0.0))
        return std::nullopt;
    const bool isAlongX = std::abs(normal.x) > std::abs(normal.y);
    const Vec3 axisX = unit(cross(isAlongX ? Vec3{0, 1, 0} : Vec3{1, 0, 0}, normal));
    const Vec3 axisY = unit(cross(normal, axisX));
    std::vector<Vec2> uv;
    uv.reserve(mesh.positions.size());
    for (const Vec3& p : mesh.positions)
        uv.push_back({dot(axisX, p), dot(axisY, p)});

    if (!isFlipFree(mesh.triangles, uv))
        return std::nullopt;
    // A gap that is next to nothing would cost more to open than another start costs.
    const std::vector<Vec2> coarse = snapped(uv);
    const Border border(mesh);
    if (doesBorderCross(border, borderPositions(border, {coarse})))
        return std::nullopt;
    return uv;
}

} // namespace unfold3d

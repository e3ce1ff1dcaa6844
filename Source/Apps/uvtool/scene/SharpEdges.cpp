#include "scene/SharpEdges.h"

#include "document/Vec3Math.h"
#include "mesh/SolverFrame.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace uvtool
{
namespace
{

constexpr double angleTolerance = 1e-3; ///< in degrees

/// A triangle whose height is less than this part of its longest side has no normal: single
/// precision, in which most files store positions, doesn't tell where it would point.
constexpr double thinnestHeight = 1e-6;

/// Zero for a triangle that has no normal.
Vec3d unitNormal(const Vec3d& a, const Vec3d& b, const Vec3d& c)
{
    const Vec3d ab = difference(b, a);
    const Vec3d ac = difference(c, a);
    const Vec3d bc = difference(c, b);
    const Vec3d normal = cross(ab, ac);
    const double twiceArea = std::sqrt(dot(normal, normal));
    const double longest = std::max({dot(ab, ab), dot(ac, ac), dot(bc, bc)});
    if (!(twiceArea > thinnestHeight * longest))
        return {};
    return {normal[0] / twiceArea, normal[1] / twiceArea, normal[2] / twiceArea};
}

/// [triangle of the scene]
std::vector<Vec3d> normalsOf(const Document& document, const SceneGeometry& scene)
{
    std::vector<Vec3d> normals;
    normals.reserve(scene.triangleCount());
    for (const SceneGeometry::Surface& surface : scene.surfaces) {
        if (!surface.fault.empty())
            continue;
        const DocumentGeometry& geometry = document.geometries[surface.number];
        const std::vector<Vec3d> points = scenePositionsOfCorners(geometry, geometry.triangles);
        for (std::size_t i = 0; i < points.size(); i += 3)
            normals.push_back(unitNormal(points[i], points[i + 1], points[i + 2]));
    }
    return normals;
}

class SharpnessTest
{
public:
    SharpnessTest(const Document& document, const SceneGeometry& scene, const SceneEdges& edges,
                  double degrees)
        : document_(document), scene_(scene), edges_(edges), normals_(normalsOf(document, scene)),
          limit_(degrees + angleTolerance)
    {}

    bool isSharp(std::span<const std::uint32_t> sides) const
    {
        if (sides.size() != 2)
            return sides.size() > 2;
        return !isInnerEdge(sides[0] / 3, sides[1] / 3) && angle(sides[0], sides[1]) > limit_;
    }

private:
    bool isInnerEdge(std::uint32_t one, std::uint32_t other) const
    {
        const TriangleSource a = scene_.sourceOfTriangle[one];
        const TriangleSource b = scene_.sourceOfTriangle[other];
        if (a.geometry != b.geometry)
            return false;
        const auto& polygons = document_.geometries[a.geometry].polygonOfTriangle;
        return polygons[a.triangle] == polygons[b.triangle];
    }

    /// In degrees; 0 where a triangle has no normal.
    double angle(std::uint32_t one, std::uint32_t other) const
    {
        const Vec3d& a = normals_[one / 3];
        Vec3d b = normals_[other / 3];
        if (a == Vec3d{} || b == Vec3d{})
            return 0.0;
        if (edges_.runAlike(one, other)) // they wind differently
            b = {-b[0], -b[1], -b[2]};
        const Vec3d sine = cross(a, b);
        return std::atan2(std::sqrt(dot(sine, sine)), dot(a, b)) * 180.0 / std::numbers::pi;
    }

    const Document& document_;
    const SceneGeometry& scene_;
    const SceneEdges& edges_;
    std::vector<Vec3d> normals_;
    double limit_;
};

} // namespace

std::vector<std::size_t> sharpEdges(const Document& document, const SceneGeometry& scene,
                                    const SceneEdges& edges, double degrees)
{
    const SharpnessTest test(document, scene, edges, degrees);
    std::vector<std::size_t> sharp;
    for (std::size_t e = 0; e < edges.size(); ++e)
        if (test.isSharp(edges.sides(e)))
            sharp.push_back(e);
    return sharp;
}

} // namespace uvtool

#include "seams/SurfaceKind.h"

#include "document/Vec3Math.h"
#include "mesh/EdgeGroups.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace uvtool
{
namespace
{

constexpr double leastScore = 0.63;

/// An edge is flat that bends by less than this part of what edges bend by on average, or by no
/// more than rounding makes of a plane; angles in radians.
constexpr double flatPart = 0.01;
constexpr double flatAngle = 3.5e-5;

/// Where planes meet.
constexpr double sharpAngle = 0.6;

/// A vertex with an angle defect below this part of the sum of squares of what its edges bend by
/// is curved in one direction only. On a sphere, however fine, it is some 0.1 to 0.3.
constexpr double singlyCurved = 0.05;

/// Below this sum of squares it is the rounding of a plane.
constexpr double flatSquares = 1e-7;

struct BentEdge
{
    std::array<std::uint32_t, 2> ends;
    std::array<std::uint32_t, 2> triangles;
    double angle;
    double length;
};

struct Bending
{
    std::vector<double> areaOfTriangle;
    std::vector<double> areaAtVertex;   ///< a third of the triangles there
    std::vector<double> defectAtVertex; ///< 360 degrees less the angles there
    std::vector<char> isAtBorder;       ///< [vertex]
    std::vector<BentEdge> edges;        ///< those of two triangles
};

Vec3d asDoubles(const Vec3f& p)
{
    return {p[0], p[1], p[2]};
}

double angleBetween(const Vec3d& a, const Vec3d& b)
{
    const Vec3d sine = cross(a, b);
    return std::atan2(std::sqrt(dot(sine, sine)), dot(a, b));
}

class BendingMeter
{
public:
    BendingMeter(std::span<const std::uint32_t> triangles, std::span<const Vec3f> points)
        : triangles_(triangles), points_(points)
    {}

    Bending measure()
    {
        bending_.areaAtVertex.assign(points_.size(), 0.0);
        bending_.defectAtVertex.assign(points_.size(), 2 * std::numbers::pi);
        bending_.isAtBorder.assign(points_.size(), 0);
        for (std::size_t t = 0; t < triangles_.size() / 3; ++t)
            measureTriangle(t);
        const EdgeGroups edges(triangles_, points_.size());
        for (std::size_t e = 0; e < edges.size(); ++e)
            measureEdge(edges[e]);
        return std::move(bending_);
    }

private:
    Vec3d point(std::size_t corner) const { return asDoubles(points_[triangles_[corner]]); }

    void measureTriangle(std::size_t t)
    {
        const std::array<Vec3d, 3> p{point(3 * t), point(3 * t + 1), point(3 * t + 2)};
        const Vec3d normal = areaNormal(p[0], p[1], p[2]);
        const double area = 0.5 * std::sqrt(dot(normal, normal));
        normals_.push_back(normalised(normal));
        bending_.areaOfTriangle.push_back(area);
        for (std::size_t k = 0; k < 3; ++k) {
            const std::uint32_t vertex = triangles_[3 * t + k];
            bending_.areaAtVertex[vertex] += area / 3;
            bending_.defectAtVertex[vertex] -=
                angleBetween(difference(p[(k + 1) % 3], p[k]), difference(p[(k + 2) % 3], p[k]));
        }
    }

    void measureEdge(std::span<const std::uint32_t> sides)
    {
        const std::array ends{triangles_[sides[0]], triangles_[endCorner(sides[0])]};
        if (sides.size() != 2) {
            for (const std::uint32_t vertex : ends)
                bending_.isAtBorder[vertex] = 1;
            return;
        }
        const std::array across{sides[0] / 3, sides[1] / 3};
        const Vec3d way = difference(point(endCorner(sides[0])), point(sides[0]));
        bending_.edges.push_back({ends, across,
                                  angleBetween(normals_[across[0]], normals_[across[1]]),
                                  std::sqrt(dot(way, way))});
    }

    std::span<const std::uint32_t> triangles_;
    std::span<const Vec3f> points_;
    std::vector<Vec3d> normals_;
    Bending bending_;
};

double flatLimit(const Bending& bending)
{
    double length = 0.0;
    double bent = 0.0;
    for (const BentEdge& edge : bending.edges) {
        length += edge.length;
        bent += edge.length * edge.angle;
    }
    return std::max(flatAngle, length > 0.0 ? flatPart * bent / length : 0.0);
}

/// Of the area, in triangles that belong to a plane. A single flat edge doesn't tell: the two
/// halves of a quad lie in one plane on many a doubly curved surface.
double flatShare(const Bending& bending)
{
    const double limit = flatLimit(bending);
    std::vector<int> flatEdges(bending.areaOfTriangle.size(), 0);
    std::vector<int> bentEdges(bending.areaOfTriangle.size(), 0);
    for (const BentEdge& edge : bending.edges)
        for (const std::uint32_t triangle : edge.triangles) {
            flatEdges[triangle] += edge.angle < limit ? 1 : 0;
            bentEdges[triangle] += edge.angle >= limit && edge.angle < sharpAngle ? 1 : 0;
        }
    double all = 0.0;
    double flat = 0.0;
    for (std::size_t t = 0; t < flatEdges.size(); ++t) {
        all += bending.areaOfTriangle[t];
        flat += flatEdges[t] > 0 && bentEdges[t] < 2 ? bending.areaOfTriangle[t] : 0.0;
    }
    return all > 0.0 ? flat / all : 0.0;
}

/// Of the area around vertices, where the surface is flat or curved in one direction. Nothing is
/// curved twice at a border, where triangles can always be laid flat.
double developableShare(const Bending& bending)
{
    std::vector<double> squares(bending.areaAtVertex.size(), 0.0);
    for (const BentEdge& edge : bending.edges)
        for (const std::uint32_t vertex : edge.ends)
            squares[vertex] += edge.angle * edge.angle;
    double all = 0.0;
    double developable = 0.0;
    for (std::size_t v = 0; v < squares.size(); ++v) {
        all += bending.areaAtVertex[v];
        if (bending.isAtBorder[v] != 0 || squares[v] < flatSquares ||
            std::abs(bending.defectAtVertex[v]) < singlyCurved * squares[v])
            developable += bending.areaAtVertex[v];
    }
    return all > 0.0 ? developable / all : 0.0;
}

} // namespace

bool isHardSurface(std::span<const std::uint32_t> triangles, std::span<const Vec3f> points)
{
    const Bending bending = BendingMeter(triangles, points).measure();
    return flatShare(bending) + developableShare(bending) >= leastScore;
}

} // namespace uvtool

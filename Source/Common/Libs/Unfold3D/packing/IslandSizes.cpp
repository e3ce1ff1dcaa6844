#include "Unfold3D/packing/IslandSizes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace unfold3d
{

namespace
{

/// An island with less area than this share of the square of its edges' length is a line.
constexpr double leastAreaOfLine = 1e-9;

struct Measure
{
    double area = 0.0;
    double edges = 0.0; ///< length of all sides of all triangles

    bool isLine() const { return area <= leastAreaOfLine * edges * edges; }
};

/// An island that is drawn out in UV has next to no area for its length, and would push all others
/// aside at the size of its surface. So its edges grow by no more than this compared with those of
/// an undistorted one.
constexpr double mostGrowthOfEdges = 8.0;

/// The two measures of an island, in units of `unitUV` and `unitSpace`.
struct Measures
{
    Measure uv;
    Measure space;
};

/// What the coordinates are divided by before they are multiplied with each other.
struct Units
{
    double uv = 1.0;
    double space = 1.0;
};

double largest(Vec2 d)
{
    return std::max(std::abs(d.x), std::abs(d.y));
}

double largest(Vec3 d)
{
    return std::max({std::abs(d.x), std::abs(d.y), std::abs(d.z)});
}

double twiceArea(Vec2 a, Vec2 b, Vec2 c)
{
    return std::abs(doubleArea(a, b, c));
}

double twiceArea(Vec3 a, Vec3 b, Vec3 c)
{
    return length(cross(b - a, c - a));
}

/// Adds one triangle; points are given relative to its first corner, in units.
template <class Vec>
void addTriangle(Vec a, Vec b, Vec c, double unit, Measure& measure)
{
    const Vec origin{};
    const Vec toB = (1.0 / unit) * (b - a);
    const Vec toC = (1.0 / unit) * (c - a);
    measure.area += 0.5 * twiceArea(origin, toB, toC);
    measure.edges += length(toB) + length(toC) + length(toC - toB);
}

Units findUnits(const ImportedMesh& mesh, const Islands& islands, std::span<const Vec2> uvs,
                std::span<const int> list)
{
    Units units{0.0, 0.0};
    for (const int island : list)
        for (const int t : islands.triangles[island]) {
            const Triangle& corner = mesh.triangles[static_cast<std::size_t>(t)];
            const auto a = static_cast<std::size_t>(corner[0]);
            for (const int other : {corner[1], corner[2]}) {
                const auto b = static_cast<std::size_t>(other);
                units.uv = std::max(units.uv, largest(uvs[b] - uvs[a]));
                units.space = std::max(units.space, largest(mesh.positions[b] - mesh.positions[a]));
            }
        }
    return {units.uv > 0.0 ? units.uv : 1.0, units.space > 0.0 ? units.space : 1.0};
}

Measures measureIsland(const ImportedMesh& mesh, std::span<const int> triangles,
                       std::span<const Vec2> uvs, const Units& units)
{
    Measures measures;
    for (const int t : triangles) {
        const Triangle& corner = mesh.triangles[static_cast<std::size_t>(t)];
        const auto a = static_cast<std::size_t>(corner[0]);
        const auto b = static_cast<std::size_t>(corner[1]);
        const auto c = static_cast<std::size_t>(corner[2]);
        addTriangle(uvs[a], uvs[b], uvs[c], units.uv, measures.uv);
        addTriangle(mesh.positions[a], mesh.positions[b], mesh.positions[c], units.space,
                    measures.space);
    }
    return measures;
}

Measures sum(const std::vector<Measures>& all)
{
    Measures whole;
    for (const Measures& m : all) {
        whole.uv.area += m.uv.area;
        whole.uv.edges += m.uv.edges;
        whole.space.area += m.space.area;
        whole.space.edges += m.space.edges;
    }
    return whole;
}

/// By which an island is to be scaled to have the size of its surface; 0 when that can't be told.
double factorOf(const Measures& m)
{
    if (!(m.uv.edges > 0.0 && m.space.edges > 0.0))
        return 0.0;
    const double byEdges = m.space.edges / m.uv.edges;
    if (m.uv.isLine() || m.space.isLine())
        return byEdges;
    return std::min(std::sqrt(m.space.area / m.uv.area), mostGrowthOfEdges * byEdges);
}

/// In units, that is for UVs divided by the unit of UVs, with results in the unit of space.
std::vector<double> factorsInUnits(const std::vector<Measures>& measures, IslandScaling scaling)
{
    std::vector<double> factors(measures.size(), 1.0);
    if (scaling == IslandScaling::None)
        return factors;
    const double common = factorOf(sum(measures));
    std::fill(factors.begin(), factors.end(), common > 0.0 ? common : 1.0);
    if (scaling != IslandScaling::ByArea)
        return factors;
    for (std::size_t i = 0; i < factors.size(); ++i)
        if (const double own = factorOf(measures[i]); own > 0.0)
            factors[i] = own;
    return factors;
}

} // namespace

IslandSizes sizeIslands(const ImportedMesh& mesh, const Islands& islands, std::span<const Vec2> uvs,
                        std::span<const int> list, IslandScaling scaling)
{
    const Units units = findUnits(mesh, islands, uvs, list);
    std::vector<Measures> measures;
    measures.reserve(list.size());
    for (const int island : list)
        measures.push_back(measureIsland(mesh, islands.triangles[island], uvs, units));

    const std::vector<double> inUnits = factorsInUnits(measures, scaling);
    double whole = 0.0;
    double largestEdges = 0.0;
    for (std::size_t i = 0; i < list.size(); ++i) {
        whole += measures[i].uv.area * inUnits[i] * inUnits[i];
        largestEdges = std::max(largestEdges, measures[i].uv.edges * inUnits[i]);
    }
    // Lines only: then the largest gets edges of length 1.
    const double side = whole > 0.0 ? std::sqrt(whole) : largestEdges > 0.0 ? largestEdges : 1.0;

    IslandSizes sizes;
    sizes.factor.reserve(list.size());
    sizes.area.reserve(list.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        const double factor = inUnits[i] / side;
        sizes.factor.push_back(factor / units.uv);
        sizes.area.push_back(measures[i].uv.area * factor * factor);
    }
    sizes.naturalScale = scaling == IslandScaling::None ? side * units.uv : side * units.space;
    return sizes;
}

} // namespace unfold3d

#include "Solids.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numbers>
#include <random>

using unfold3d::Triangle;
using unfold3d::Vec3;

namespace solids
{

namespace
{

using Lattice = std::array<int, 3>;

/// Collects squares between lattice points, with one vertex for each point.
struct LatticeSurface
{
    IslandMesh mesh;
    std::map<Lattice, int> vertexOf;

    int vertex(const Lattice& p)
    {
        const auto [at, isNew] = vertexOf.try_emplace(p, mesh.vertexCount());
        if (isNew)
            mesh.positions.push_back({1.0 * p[0], 1.0 * p[1], 1.0 * p[2]});
        return at->second;
    }
    /// The square of the cell at `p` that looks along an axis, or against it.
    void addSquare(Lattice p, std::size_t axis, bool along)
    {
        p[axis] += along ? 1 : 0;
        std::array<int, 4> corners{};
        for (std::size_t k = 0; k < 4; ++k) {
            Lattice q = p;
            q[(axis + 1) % 3] += k == 1 || k == 2 ? 1 : 0;
            q[(axis + 2) % 3] += k >= 2 ? 1 : 0;
            corners[along ? k : 3 - k] = vertex(q);
        }
        mesh.triangles.push_back({corners[0], corners[1], corners[2]});
        mesh.triangles.push_back({corners[0], corners[2], corners[3]});
    }
};

bool always(int, int, int)
{
    return true;
}

} // namespace

IslandMesh cubes(int countX, int countY, int countZ, bool (*isFull)(int i, int j, int k))
{
    const Lattice counts{countX, countY, countZ};
    const auto isSolid = [&](const Lattice& c) {
        for (std::size_t axis = 0; axis < 3; ++axis)
            if (c[axis] < 0 || c[axis] >= counts[axis])
                return false;
        return isFull(c[0], c[1], c[2]);
    };
    LatticeSurface surface;
    Lattice c{};
    for (c[0] = 0; c[0] < countX; ++c[0])
        for (c[1] = 0; c[1] < countY; ++c[1])
            for (c[2] = 0; c[2] < countZ; ++c[2])
                for (std::size_t axis = 0; axis < 3 && isSolid(c); ++axis)
                    for (const bool along : {false, true}) {
                        Lattice beyond = c;
                        beyond[axis] += along ? 1 : -1;
                        if (!isSolid(beyond))
                            surface.addSquare(c, axis, along);
                    }
    return surface.mesh;
}

IslandMesh box(int countX, int countY, int countZ)
{
    return cubes(countX, countY, countZ, always);
}

IslandMesh turned(const std::vector<std::pair<double, double>>& line, int sides)
{
    IslandMesh mesh;
    mesh.positions.push_back({0.0, 0.0, line.front().second});
    const int rings = static_cast<int>(line.size()) - 2;
    for (int ring = 1; ring <= rings; ++ring)
        for (int side = 0; side < sides; ++side) {
            const double angle = 2.0 * std::numbers::pi * side / sides;
            const auto& [radius, height] = line[static_cast<std::size_t>(ring)];
            mesh.positions.push_back({radius * std::cos(angle), radius * std::sin(angle), height});
        }
    const int top = mesh.vertexCount();
    mesh.positions.push_back({0.0, 0.0, line.back().second});
    for (int side = 0; side < sides; ++side) {
        const int next = (side + 1) % sides;
        mesh.triangles.push_back({0, 1 + next, 1 + side});
        for (int ring = 0; ring + 1 < rings; ++ring) {
            const int low = 1 + ring * sides;
            mesh.triangles.push_back({low + side, low + next, low + sides + next});
            mesh.triangles.push_back({low + side, low + sides + next, low + sides + side});
        }
        const int last = 1 + (rings - 1) * sides;
        mesh.triangles.push_back({last + side, last + next, top});
    }
    return mesh;
}

IslandMesh sphere(int sides)
{
    std::vector<std::pair<double, double>> line;
    for (int ring = 0; 2 * ring <= sides; ++ring) {
        const double angle = 2.0 * std::numbers::pi * ring / sides;
        line.emplace_back(std::sin(angle), -std::cos(angle));
    }
    return turned(line, sides);
}

IslandMesh cylinder(int sides, int rings)
{
    std::vector<std::pair<double, double>> line{{0.0, 0.0}};
    for (int ring = 0; ring <= rings; ++ring)
        line.emplace_back(1.0, 3.0 * ring / rings);
    line.emplace_back(0.0, 3.0);
    return turned(line, sides);
}

IslandMesh roundedBox(double radius, int steps)
{
    IslandMesh mesh = box(3 * steps, 3 * steps, 3 * steps);
    // Lattice planes lie at even angles on the roundings, and at even distances on the flats.
    const auto place = [&](double lattice) {
        const double s = lattice / steps - 1.5;
        const double flat = std::clamp(2.0 * s, -1.0, 1.0) * (1.0 - radius);
        const double angle = (std::abs(s) - 0.5) * 0.25 * std::numbers::pi;
        return angle > 0.0 ? flat + std::copysign(radius * std::tan(angle), s) : flat;
    };
    for (Vec3& p : mesh.positions) {
        const Vec3 q{place(p.x), place(p.y), place(p.z)};
        const double core = 1.0 - radius;
        const Vec3 inner{std::clamp(q.x, -core, core), std::clamp(q.y, -core, core),
                         std::clamp(q.z, -core, core)};
        const Vec3 outward = q - inner;
        p = inner + (radius / length(outward)) * outward;
    }
    return mesh;
}

IslandMesh soup(unsigned seed)
{
    std::mt19937 random(seed);
    const auto below = [&](int count) {
        return std::uniform_int_distribution<int>(0, count - 1)(random);
    };
    IslandMesh mesh;
    const int vertexCount = 3 + below(seed % 3 == 0 ? 8 : 60);
    for (int v = 0; v < vertexCount; ++v)
        mesh.positions.push_back({1.0 * below(4), 1.0 * below(4), below(2) * 1e-9});
    for (int t = 1 + below(60); t > 0; --t)
        mesh.triangles.push_back({below(vertexCount), below(vertexCount), below(vertexCount)});
    return mesh;
}

} // namespace solids

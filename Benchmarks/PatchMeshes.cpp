#include "PatchMeshes.h"

#include <cmath>
#include <numbers>
#include <random>

namespace bench
{

namespace
{

void addVertex(FlatMesh& mesh, double x, double y, double z, double u, double v)
{
    mesh.coordsXYZ.insert(mesh.coordsXYZ.end(), {x, y, z});
    mesh.coordsUVW.insert(mesh.coordsUVW.end(), {u, v, 0.0});
}

double hills(double x, double y)
{
    double height = 0.0;
    for (const double waves : {2.0, 5.0, 11.0})
        height += 0.35 / waves * std::sin(2.0 * std::numbers::pi * waves * x + waves) *
                  std::cos(2.0 * std::numbers::pi * waves * y - waves);
    return height;
}

// A disk of rings around a centre vertex, lifted onto a paraboloid.
void addShellPiece(FlatMesh& mesh, int rings, int sides, double radius, double bend)
{
    const int centre = mesh.vertexCount();
    addVertex(mesh, 0.0, 0.0, 0.0, 0.0, 0.0);
    for (int ring = 1; ring <= rings; ++ring)
        for (int side = 0; side < sides; ++side) {
            const double r = radius * ring / rings;
            const double angle = 2.0 * std::numbers::pi * side / sides;
            const double wobble = 1.0 + 0.25 * std::sin(3.0 * angle) * ring / rings;
            const double x = r * wobble * std::cos(angle);
            const double y = r * wobble * std::sin(angle);
            addVertex(mesh, x, y, bend * r * r, x, y);
        }
    const auto at = [&](int ring, int side) {
        return centre + 1 + (ring - 1) * sides + side % sides;
    };
    for (int side = 0; side < sides; ++side)
        mesh.triangles.insert(mesh.triangles.end(), {centre, at(1, side), at(1, side + 1)});
    for (int ring = 1; ring < rings; ++ring)
        for (int side = 0; side < sides; ++side)
            mesh.triangles.insert(mesh.triangles.end(),
                                  {at(ring, side), at(ring + 1, side), at(ring + 1, side + 1),
                                   at(ring, side), at(ring + 1, side + 1), at(ring, side + 1)});
}

} // namespace

FlatMesh bumpyPatch(int triangleCount)
{
    const int cells = std::max(1, static_cast<int>(std::lround(std::sqrt(triangleCount / 2.0))));
    FlatMesh mesh;
    for (int row = 0; row <= cells; ++row)
        for (int column = 0; column <= cells; ++column) {
            const double x = static_cast<double>(column) / cells;
            const double y = static_cast<double>(row) / cells;
            addVertex(mesh, x, y, hills(x, y), x, y);
        }
    for (int row = 0; row < cells; ++row)
        for (int column = 0; column < cells; ++column) {
            const int a = row * (cells + 1) + column;
            const int b = a + cells + 1;
            mesh.triangles.insert(mesh.triangles.end(), {a, a + 1, b + 1, a, b + 1, b});
        }
    return mesh;
}

FlatMesh shellPieces(int islandCount)
{
    std::minstd_rand random(1);
    // Own arithmetic on the generator's numbers: the standard distributions differ between
    // libraries.
    const auto uniform = [&](double low, double high) {
        return low + (high - low) * static_cast<double>(random() - 1) / 2147483645.0;
    };
    FlatMesh mesh;
    for (int island = 0; island < islandCount; ++island) {
        const int rings = 1 + static_cast<int>(uniform(0.0, 2.999));
        const int sides = 8 + static_cast<int>(uniform(0.0, 12.0));
        const double size = uniform(0.0, 1.0);
        addShellPiece(mesh, rings, sides, 0.2 + size * size, uniform(0.0, 0.8));
    }
    return mesh;
}

} // namespace bench

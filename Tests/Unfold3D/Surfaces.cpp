#include "Surfaces.h"

#include "LayoutChecks.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace surfaces
{

namespace
{

constexpr double fullTurn = 2.0 * std::numbers::pi;

void addSquare(IslandMesh& mesh, int a, int b, int c, int d)
{
    mesh.triangles.push_back({a, b, c});
    mesh.triangles.push_back({a, c, d});
}

bool never(int, int)
{
    return false;
}

/// Only the vertices that triangles use, in order.
IslandMesh withoutUnusedVertices(const IslandMesh& mesh)
{
    std::vector<int> newOfOld(mesh.positions.size(), -1);
    IslandMesh result;
    result.triangles = mesh.triangles;
    for (const Triangle& t : mesh.triangles)
        for (const int v : t)
            newOfOld[static_cast<std::size_t>(v)] = 0;
    for (std::size_t v = 0; v < newOfOld.size(); ++v)
        if (newOfOld[v] == 0) {
            newOfOld[v] = result.vertexCount();
            result.positions.push_back(mesh.positions[v]);
        }
    for (Triangle& t : result.triangles)
        for (int& v : t)
            v = newOfOld[static_cast<std::size_t>(v)];
    return result;
}

} // namespace

IslandMesh sheetWithHoles(int columns, int rows, bool (*isHole)(int i, int j))
{
    IslandMesh mesh;
    for (int j = 0; j <= rows; ++j)
        for (int i = 0; i <= columns; ++i)
            mesh.positions.push_back({static_cast<double>(i), static_cast<double>(j), 0.0});
    for (int j = 0; j < rows; ++j)
        for (int i = 0; i < columns; ++i) {
            if (isHole(i, j))
                continue;
            const int corner = i + j * (columns + 1);
            addSquare(mesh, corner, corner + 1, corner + columns + 2, corner + columns + 1);
        }
    return withoutUnusedVertices(mesh);
}

IslandMesh sheet(int columns, int rows)
{
    return sheetWithHoles(columns, rows, never);
}

IslandMesh hills(int columns, int rows, double height)
{
    IslandMesh mesh = sheet(columns, rows);
    for (Vec3& p : mesh.positions)
        p.z = height * std::sin(1.1 * p.x + 0.3) * std::cos(0.9 * p.y - 0.2);
    return mesh;
}

IslandMesh tube(int sides, int rings, double radius, double ringHeight)
{
    IslandMesh mesh;
    for (int ring = 0; ring <= rings; ++ring)
        for (int side = 0; side < sides; ++side) {
            const double angle = fullTurn * side / sides;
            mesh.positions.push_back(
                {radius * std::cos(angle), radius * std::sin(angle), ringHeight * ring});
        }
    for (int ring = 0; ring < rings; ++ring)
        for (int side = 0; side < sides; ++side) {
            const int a = ring * sides + side;
            const int b = ring * sides + (side + 1) % sides;
            addSquare(mesh, a, b, b + sides, a + sides);
        }
    return mesh;
}

IslandMesh finger(int sides, int rings, double radius, double ringHeight)
{
    IslandMesh mesh = tube(sides, rings, radius, ringHeight);
    const int tip = mesh.vertexCount();
    mesh.positions.push_back({0.0, 0.0, ringHeight * rings + radius});
    for (int side = 0; side < sides; ++side)
        mesh.triangles.push_back({rings * sides + side, rings * sides + (side + 1) % sides, tip});
    return mesh;
}

IslandMesh tetrahedron()
{
    return {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
            {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {0, 3, 2}}};
}

IslandMesh torus(int around, int across, int openSquares)
{
    IslandMesh mesh;
    for (int i = 0; i < around; ++i)
        for (int j = 0; j < across; ++j) {
            const double big = fullTurn * i / around;
            const double small = fullTurn * j / across;
            const double r = 3.0 + std::cos(small);
            mesh.positions.push_back({r * std::cos(big), r * std::sin(big), std::sin(small)});
        }
    for (int i = 0; i < around; ++i)
        for (int j = 0; j < across; ++j) {
            if (i * across + j < openSquares)
                continue;
            const int nextI = (i + 1) % around;
            const int nextJ = (j + 1) % across;
            addSquare(mesh, i * across + j, nextI * across + j, nextI * across + nextJ,
                      i * across + nextJ);
        }
    return withoutUnusedVertices(mesh);
}

IslandMesh blades(int count)
{
    IslandMesh mesh;
    mesh.positions.push_back({0.0, 0.0, 0.0});
    for (int i = 0; i < count; ++i) {
        for (const double share : {0.1, 0.6}) {
            const double angle = fullTurn * (i + share) / count;
            mesh.positions.push_back({std::cos(angle), std::sin(angle), 0.2 * i});
        }
        mesh.triangles.push_back({0, 2 * i + 1, 2 * i + 2});
    }
    return mesh;
}

IslandMesh spiral(int turns, int squaresPerTurn)
{
    IslandMesh mesh;
    const int squares = turns * squaresPerTurn;
    for (int i = 0; i <= squares; ++i)
        for (const double side : {0.0, 0.5}) {
            const double angle = fullTurn * i / squaresPerTurn;
            const double r = 1.0 + angle / fullTurn + side;
            mesh.positions.push_back({r * std::cos(angle), r * std::sin(angle), 0.0});
        }
    for (int i = 0; i < squares; ++i)
        addSquare(mesh, 2 * i, 2 * i + 1, 2 * i + 3, 2 * i + 2);
    return mesh;
}

IslandMesh needleFan(int needles)
{
    IslandMesh mesh;
    mesh.positions.push_back({0.5, 1.0, 0.0});
    for (int i = 0; i <= needles; ++i)
        mesh.positions.push_back({static_cast<double>(i) / needles, 0.0, 0.0});
    for (int i = 0; i < needles; ++i)
        mesh.triangles.push_back({0, i + 1, i + 2});
    return mesh;
}

IslandMesh cutCone(double turns, int sides, int rings)
{
    // The directions of the rays wind around the axis once and up and down as often as it takes.
    IslandMesh mesh;
    mesh.positions.push_back({0.0, 0.0, 0.0});
    for (int ring = 1; ring <= rings; ++ring)
        for (int side = 0; side <= sides; ++side) {
            const double angle = fullTurn * side / sides;
            const double tilt = std::sqrt(std::max(0.0, turns - 1.0)) * std::sin(4.0 * angle);
            mesh.positions.push_back({ring * std::cos(tilt) * std::cos(angle),
                                      ring * std::cos(tilt) * std::sin(angle),
                                      ring * std::sin(tilt)});
        }
    for (int side = 1; side <= sides; ++side)
        mesh.triangles.push_back({0, side, side + 1});
    for (int ring = 1; ring < rings; ++ring)
        for (int side = 1; side <= sides; ++side) {
            const int inner = (ring - 1) * (sides + 1) + side;
            const int outer = inner + sides + 1;
            addSquare(mesh, inner, outer, outer + 1, inner + 1);
        }
    return mesh;
}

std::vector<Named> openSurfaces()
{
    return {
        {"one triangle", blades(1)},
        {"a sheet", sheet(5, 4)},
        {"steep hills", hills(12, 9, 3.0)},
        {"a ring", tube(7, 3, 1.0, 0.5)},
        {"a long tube", tube(6, 150, 1.0, 1.0)},
        {"four holes",
         sheetWithHoles(9, 9,
                        [](int i, int j) { return (i == 2 || i == 6) && (j == 2 || j == 6); })},
        {"a finger", finger(8, 10, 1.0, 1.0)},
        {"a finger that shrinks below doubles", finger(6, 200, 1.0, 1.0)},
        {"a spiral", spiral(5, 24)},
        {"needles", needleFan(200)},
        {"two blades", blades(2)},
        {"seven blades", blades(7)},
        {"holes that meet at a corner",
         sheetWithHoles(4, 4,
                        [](int i, int j) { return (i == 1 && j == 1) || (i == 2 && j == 2); })},
        {"a chessboard", sheetWithHoles(6, 6, [](int i, int j) { return (i + j) % 2 == 1; })},
        {"all on one point", {std::vector<Vec3>(4), {{0, 1, 2}, {0, 2, 3}}}},
    };
}

IslandMesh normalised(IslandMesh mesh)
{
    const Vec3 origin = mesh.positions.front();
    const double scale = 1.0 / std::sqrt(layout::areaOf(mesh));
    for (Vec3& p : mesh.positions)
        p = scale * (p - origin);
    return mesh;
}

} // namespace surfaces

#include "Unfold3D/seams/StitchLayout.h"

#include "Unfold3D/linear/SparseCholesky.h"
#include "Unfold3D/linear/SymbolicCholesky.h"
#include "Unfold3D/linear/VertexGraph.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Cotangents of the angles of triangles without area, and of obtuse ones, are taken within these:
/// positive springs have one balance.
constexpr double leastSpring = 1e-2;
constexpr double mostSpring = 1e4;

/// Stiffness of the edge opposite to a corner.
double springAt(const CornerUVs& uv, std::size_t corner)
{
    const Vec2 a = uv[(corner + 1) % 3] - uv[corner];
    const Vec2 b = uv[(corner + 2) % 3] - uv[corner];
    const double sine = std::abs(cross(a, b));
    const double cosine = dot(a, b);
    if (!(cosine > leastSpring * sine))
        return leastSpring;
    return cosine < mostSpring * sine ? cosine / sine : mostSpring;
}

} // namespace

std::vector<Vec2> stitchedLayout(std::span<const Triangle> triangles, int vertexCount,
                                 std::span<const CornerUVs> corners, const RunControl& control)
{
    const SymbolicCholesky symbolic = analyse(vertexGraph(triangles, vertexCount), control);
    BlockMatrix matrix(symbolic, 1);
    matrix.setZero();
    std::vector<double> x(at(vertexCount), 0.0);
    std::vector<double> y(at(vertexCount), 0.0);
    for (std::size_t t = 0; t < triangles.size(); ++t)
        for (std::size_t i = 0; i < 3; ++i) {
            const std::size_t from = (i + 1) % 3;
            const std::size_t to = (i + 2) % 3;
            const double spring = springAt(corners[t], i);
            const int a = symbolic.newOfOld[at(triangles[t][from])];
            const int b = symbolic.newOfOld[at(triangles[t][to])];
            const Vec2 pull = spring * (corners[t][to] - corners[t][from]);
            matrix.diagonal[at(a)] += spring;
            matrix.diagonal[at(b)] += spring;
            matrix.lower[at(symbolic.entryOf(a, b))] -= spring;
            x[at(a)] -= pull.x;
            y[at(a)] -= pull.y;
            x[at(b)] += pull.x;
            y[at(b)] += pull.y;
        }
    // One vertex is held, as the whole could lie anywhere.
    matrix.diagonal[at(symbolic.newOfOld[at(triangles.front()[0])])] += 1.0;
    SparseCholesky cholesky(symbolic);
    cholesky.factorise(matrix, control);
    cholesky.solve(x);
    cholesky.solve(y);
    std::vector<Vec2> uv(at(vertexCount));
    for (std::size_t v = 0; v < uv.size(); ++v) {
        const std::size_t column = at(symbolic.newOfOld[v]);
        uv[v] = {x[column], y[column]};
    }
    return uv;
}

} // namespace unfold3d

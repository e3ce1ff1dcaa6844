#include "Unfold3D/parameterisation/DistortionEnergy.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace unfold3d
{

namespace
{

constexpr double infinity = std::numeric_limits<double>::infinity();

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

void addHessian(const FlatTriangle& triangle, const TriangleDerivatives& derivatives,
                BlockMatrix& hessian)
{
    for (int i = 0; i < 3; ++i) {
        double* const own = hessian.diagonal.data() + at(triangle.corners[at(i)]) * 4;
        for (int m = 0; m < 4; ++m)
            addProduct(own, derivatives.curvature[m], derivatives.mode[m][i],
                       derivatives.mode[m][i]);

        const int j = (i + 1) % 3;
        double* const pair = hessian.lower.data() + at(triangle.entries[at(i)]) * 4;
        const bool iIsRow = triangle.corners[at(i)] > triangle.corners[at(j)];
        const int row = iIsRow ? i : j;
        const int column = iIsRow ? j : i;
        for (int m = 0; m < 4; ++m)
            addProduct(pair, derivatives.curvature[m], derivatives.mode[m][row],
                       derivatives.mode[m][column]);
    }
}

/// Smallest positive root of a t^2 + b t + c for c > 0; infinite without one.
double smallestPositiveRoot(double a, double b, double c)
{
    const double discriminant = b * b - 4.0 * a * c;
    if (!(discriminant >= 0.0))
        return infinity;
    const double root = std::sqrt(discriminant);
    // The form of each root that adds numbers of one sign.
    if (b < 0.0)
        return 2.0 * c / (root - b);
    return a < 0.0 ? -(b + root) / (2.0 * a) : infinity;
}

} // namespace

double Distortion::bestEnergy() const
{
    return 2.0 * std::sqrt(stretch) * std::sqrt(shrink);
}

double Distortion::bestScale() const
{
    return std::sqrt(std::sqrt(shrink) / std::sqrt(stretch));
}

Distortion measure(const EliminationMesh& mesh, std::span<const Vec2> uv)
{
    Distortion sum;
    for (const FlatTriangle& triangle : mesh.triangles) {
        const Vec2 origin = uv[at(triangle.corners[0])];
        const TriangleMap map(triangle.metric, uv[at(triangle.corners[1])] - origin,
                              uv[at(triangle.corners[2])] - origin);
        if (!(map.det > 0.0))
            return {sum.stretch, infinity};
        const double squares = triangle.metric.area * map.squaredNorm();
        sum.stretch += squares;
        sum.shrink += squares / map.det / map.det;
    }
    return sum;
}

void addDerivatives(const EliminationMesh& mesh, std::span<const Vec2> uv, Curvature kind,
                    std::span<Vec2> gradient, BlockMatrix& hessian)
{
    for (const FlatTriangle& triangle : mesh.triangles) {
        const Vec2 origin = uv[at(triangle.corners[0])];
        const TriangleMap map(triangle.metric, uv[at(triangle.corners[1])] - origin,
                              uv[at(triangle.corners[2])] - origin);
        const TriangleDerivatives derivatives(triangle.metric, map, kind);
        for (int i = 0; i < 3; ++i)
            gradient[at(triangle.corners[at(i)])] += derivatives.slope[i];
        addHessian(triangle, derivatives, hessian);
    }
}

double firstFlip(const EliminationMesh& mesh, std::span<const Vec2> uv,
                 std::span<const Vec2> direction)
{
    double first = infinity;
    for (const FlatTriangle& triangle : mesh.triangles) {
        const auto& [i, j, k] = triangle.corners;
        const Vec2 edge1 = uv[at(j)] - uv[at(i)];
        const Vec2 edge2 = uv[at(k)] - uv[at(i)];
        const Vec2 change1 = direction[at(j)] - direction[at(i)];
        const Vec2 change2 = direction[at(k)] - direction[at(i)];
        first = std::min(first, smallestPositiveRoot(cross(change1, change2),
                                                     cross(edge1, change2) + cross(change1, edge2),
                                                     accurateCross(edge1, edge2)));
    }
    return first;
}

bool isFlipFree(const EliminationMesh& mesh, std::span<const Vec2> uv)
{
    return std::all_of(mesh.triangles.begin(), mesh.triangles.end(), [uv](const FlatTriangle& t) {
        return doubleArea(uv[at(t.corners[0])], uv[at(t.corners[1])], uv[at(t.corners[2])]) > 0.0;
    });
}

} // namespace unfold3d

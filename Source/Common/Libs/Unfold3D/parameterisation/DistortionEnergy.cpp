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

TriangleMap mapOf(const FlatTriangle& triangle, std::span<const Vec2> uv)
{
    const Vec2 origin = uv[at(triangle.corners[0])];
    return {triangle.metric, uv[at(triangle.corners[1])] - origin,
            uv[at(triangle.corners[2])] - origin};
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

/// How far a triangle can move until it has no area left.
double flipOf(const FlatTriangle& triangle, std::span<const Vec2> uv,
              std::span<const Vec2> direction)
{
    const auto& [i, j, k] = triangle.corners;
    const Vec2 edge1 = uv[at(j)] - uv[at(i)];
    const Vec2 edge2 = uv[at(k)] - uv[at(i)];
    const Vec2 change1 = direction[at(j)] - direction[at(i)];
    const Vec2 change2 = direction[at(k)] - direction[at(i)];
    return smallestPositiveRoot(cross(change1, change2),
                                cross(edge1, change2) + cross(change1, edge2),
                                accurateCross(edge1, edge2));
}

} // namespace

double Distortion::energy(double lengths) const
{
    const double ofLengths = stretch + shrink;
    return lengths == 1.0 ? ofLengths : lengths * ofLengths + (1.0 - lengths) * angles;
}

double Distortion::bestEnergy(double lengths) const
{
    const double ofLengths = 2.0 * std::sqrt(stretch) * std::sqrt(shrink);
    return lengths == 1.0 ? ofLengths : lengths * ofLengths + (1.0 - lengths) * angles;
}

double Distortion::bestScale() const
{
    return std::sqrt(std::sqrt(shrink) / std::sqrt(stretch));
}

Distortion measure(const EliminationMesh& mesh, std::span<const Vec2> uv)
{
    Distortion sum;
    for (const FlatTriangle& triangle : mesh.triangles) {
        const TriangleMap map = mapOf(triangle, uv);
        if (!(map.det > 0.0))
            return {sum.stretch, infinity, infinity};
        const double squares = triangle.metric.area * map.squaredNorm();
        const double perDet = squares / map.det;
        sum.stretch += squares;
        sum.shrink += perDet / map.det;
        sum.angles += 2.0 * perDet;
    }
    return sum;
}

double energyWithFlips(const EliminationMesh& mesh, std::span<const Vec2> uv,
                       const LayoutEnergy& energy)
{
    double sum = 0.0;
    for (const FlatTriangle& triangle : mesh.triangles) {
        const TriangleMap map = mapOf(triangle, uv);
        const EnergyTerms terms = EnergyTerms::withFlips(map.det, energy);
        sum += triangle.metric.area * (map.squaredNorm() * terms.h[0] + terms.k[0]);
    }
    return sum;
}

void addDerivatives(const EliminationMesh& mesh, std::span<const Vec2> uv,
                    const LayoutEnergy& energy, Curvature kind, std::span<Vec2> gradient,
                    BlockMatrix& hessian)
{
    for (const FlatTriangle& triangle : mesh.triangles) {
        const TriangleDerivatives derivatives(triangle.metric, mapOf(triangle, uv), energy, kind);
        for (int i = 0; i < 3; ++i)
            gradient[at(triangle.corners[at(i)])] += derivatives.slope[i];
        addHessian(triangle, derivatives, hessian);
    }
}

double firstFlip(const EliminationMesh& mesh, std::span<const Vec2> uv,
                 std::span<const Vec2> direction)
{
    double first = infinity;
    for (const FlatTriangle& triangle : mesh.triangles)
        first = std::min(first, flipOf(triangle, uv, direction));
    return first;
}

std::vector<int> flippingTriangles(const EliminationMesh& mesh, std::span<const Vec2> uv,
                                   std::span<const Vec2> direction, double multiple)
{
    std::vector<int> flipping;
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t)
        if (flipOf(mesh.triangles[t], uv, direction) < multiple)
            flipping.push_back(static_cast<int>(t));
    return flipping;
}

double leastDeterminant(const EliminationMesh& mesh, std::span<const Vec2> uv)
{
    double least = infinity;
    for (const FlatTriangle& triangle : mesh.triangles)
        least = std::min(least, mapOf(triangle, uv).det);
    return least;
}

} // namespace unfold3d

#include "ConformalReference.h"

#include <Eigen/Geometry>
#include <Eigen/SparseCholesky>
#include <Eigen/SparseCore>

#include <array>
#include <cmath>
#include <cstddef>
#include <stdexcept>

namespace bench
{

namespace
{

using Matrix = Eigen::SparseMatrix<double>;

Eigen::Map<const Eigen::Vector3d> position(const FlatMesh& mesh, int vertex)
{
    return Eigen::Map<const Eigen::Vector3d>(mesh.coordsXYZ.data() + std::ptrdiff_t{3} * vertex);
}

int farthestFrom(const FlatMesh& mesh, int from)
{
    int farthest = from;
    double most = 0.0;
    for (int v = 0; v < mesh.vertexCount(); ++v) {
        const double distance = (position(mesh, v) - position(mesh, from)).squaredNorm();
        if (distance > most) {
            most = distance;
            farthest = v;
        }
    }
    return farthest;
}

/// Two rows for each triangle: its map must be similar. Columns are u and v of each vertex.
Matrix similarityRows(const FlatMesh& mesh)
{
    std::vector<Eigen::Triplet<double>> entries;
    entries.reserve(mesh.triangles.size() * 4);
    for (int t = 0; t < mesh.triangleCount(); ++t) {
        const int* const corner = mesh.triangles.data() + std::ptrdiff_t{3} * t;
        const Eigen::Vector3d p = position(mesh, corner[1]) - position(mesh, corner[0]);
        const Eigen::Vector3d q = position(mesh, corner[2]) - position(mesh, corner[0]);
        const double base = p.norm();
        const double x = p.dot(q) / base;
        const double y = p.cross(q).norm() / base;
        const double weight = 1.0 / std::sqrt(base * y);
        // The opposite edge of each corner, as a complex number.
        const std::array<std::array<double, 2>, 3> edges = {{{x - base, y}, {-x, -y}, {base, 0.0}}};
        for (std::size_t i = 0; i < 3; ++i) {
            const double real = weight * edges[i][0];
            const double imaginary = weight * edges[i][1];
            entries.emplace_back(2 * t, 2 * corner[i], real);
            entries.emplace_back(2 * t, 2 * corner[i] + 1, -imaginary);
            entries.emplace_back(2 * t + 1, 2 * corner[i], imaginary);
            entries.emplace_back(2 * t + 1, 2 * corner[i] + 1, real);
        }
    }
    Matrix rows(2 * mesh.triangleCount(), 2 * mesh.vertexCount());
    rows.setFromTriplets(entries.begin(), entries.end());
    return rows;
}

} // namespace

std::vector<double> leastSquaresConformalMap(const FlatMesh& mesh)
{
    const int first = farthestFrom(mesh, 0);
    const int second = farthestFrom(mesh, first);
    Eigen::VectorXd pins = Eigen::VectorXd::Zero(2L * mesh.vertexCount());
    pins[2L * second] = 1.0;
    const auto isPinned = [&](Eigen::Index column) {
        return column / 2 == first || column / 2 == second;
    };

    const Matrix rows = similarityRows(mesh);
    Eigen::VectorXd right = rows.transpose() * (-(rows * pins));
    Matrix normal = rows.transpose() * rows;
    normal.prune([&](Eigen::Index row, Eigen::Index column, double) {
        return row == column || !(isPinned(row) || isPinned(column));
    });
    for (Eigen::Index column = 0; column < right.size(); ++column)
        if (isPinned(column))
            right[column] = 0.0;

    const Eigen::SimplicialLDLT<Matrix> factor(normal);
    if (factor.info() != Eigen::Success)
        throw std::runtime_error("the conformal map has no factor");
    const Eigen::VectorXd uv = factor.solve(right) + pins;
    std::vector<double> uvw(mesh.coordsXYZ.size(), 0.0);
    for (int v = 0; v < mesh.vertexCount(); ++v) {
        uvw[3 * static_cast<std::size_t>(v)] = uv[2L * v];
        uvw[3 * static_cast<std::size_t>(v) + 1] = uv[2L * v + 1];
    }
    return uvw;
}

} // namespace bench

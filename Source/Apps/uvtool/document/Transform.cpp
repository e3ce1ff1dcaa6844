#include "document/Transform.h"

#include <cmath>

namespace uvtool
{

Vec3d toScene(const SceneMatrix& m, const Vec3d& point)
{
    Vec3d out{};
    for (std::size_t row = 0; row < 3; ++row)
        out[row] = m[row] * point[0] + m[4 + row] * point[1] + m[8 + row] * point[2] + m[12 + row];
    return out;
}

Vec3d normalToScene(const SceneMatrix& m, const Vec3f& normal)
{
    // The cofactors of the linear part carry normals over, up to their length, even where the
    // matrix has no inverse. A mirroring turns them round, hence the sign below.
    const auto cofactor = [&m](std::size_t row, std::size_t column) {
        const std::size_t r1 = (row + 1) % 3;
        const std::size_t r2 = (row + 2) % 3;
        const std::size_t c1 = 4 * ((column + 1) % 3);
        const std::size_t c2 = 4 * ((column + 2) % 3);
        return m[c1 + r1] * m[c2 + r2] - m[c2 + r1] * m[c1 + r2];
    };
    Vec3d out{};
    double determinant = 0;
    double squared = 0;
    for (std::size_t row = 0; row < 3; ++row) {
        determinant += m[row] * cofactor(row, 0);
        for (std::size_t column = 0; column < 3; ++column)
            out[row] += cofactor(row, column) * static_cast<double>(normal[column]);
        squared += out[row] * out[row];
    }
    const double scale = squared > 0 ? std::copysign(1 / std::sqrt(squared), determinant) : 0;
    for (double& value : out)
        value *= scale;
    return out;
}

} // namespace uvtool

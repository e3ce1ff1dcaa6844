#include "Unfold3D/start/StartDistortion.h"

#include "Unfold3D/parameterisation/TriangleEnergy.h"

#include <limits>

namespace unfold3d
{

double startDistortion(const IslandMesh& mesh, std::span<const Vec2> uv)
{
    double stretch = 0.0;
    double shrink = 0.0;
    double area = 0.0;
    for (int t = 0; t < mesh.triangleCount(); ++t) {
        const auto& [a, b, c] = mesh.triangles[static_cast<std::size_t>(t)];
        const Vec2 origin = uv[static_cast<std::size_t>(a)];
        const TriangleMetric metric(restTriangle(mesh, t));
        const TriangleMap map(metric, uv[static_cast<std::size_t>(b)] - origin,
                              uv[static_cast<std::size_t>(c)] - origin);
        if (!(map.det > 0.0))
            return std::numeric_limits<double>::infinity();
        stretch += metric.area * map.squaredNorm();
        shrink += metric.area * map.squaredNorm() / (map.det * map.det);
        area += metric.area;
    }
    // Scaled by c, the energy is c^2 stretch + shrink / c^2.
    const double energy = 2.0 * std::sqrt(stretch) * std::sqrt(shrink) / area;
    return std::isfinite(energy) ? energy : std::numeric_limits<double>::infinity();
}

} // namespace unfold3d

#include "Unfold3D/seams/HiddenSeamCosts.h"

#include "Unfold3D/seams/Visibility.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// Factor of an edge that no light reaches; 1 is that of one in full light.
constexpr double factorInTheDark = 0.3;
/// An edge counts as a crease from the first angle on, fully from the second, in radians.
constexpr double softCrease = 0.35;
constexpr double hardCrease = 1.2;
constexpr double factorOfValley = 0.4;
constexpr double factorOfRidge = 0.55;
/// Below this angle, in radians, an edge lies in a plane.
constexpr double flatAngle = 1e-3;
constexpr double factorOfFlat = 1.3;

double creaseFactor(double angle)
{
    const double size = std::abs(angle);
    if (size < flatAngle)
        return factorOfFlat;
    const double share = std::clamp((size - softCrease) / (hardCrease - softCrease), 0.0, 1.0);
    return 1.0 + share * ((angle < 0.0 ? factorOfValley : factorOfRidge) - 1.0);
}

} // namespace

std::vector<double> hiddenSeamCosts(const SeamMesh& mesh, const RunControl& control)
{
    const std::vector<double> light = vertexVisibility(mesh.positions, mesh.triangles, control);
    std::vector<double> costs(mesh.lengths.size());
    for (int e = 0; e < mesh.edgeCount(); ++e) {
        const auto i = static_cast<std::size_t>(e);
        const auto [a, b] = mesh.verticesOf(e);
        const double seen = std::clamp(
            0.5 * (light[static_cast<std::size_t>(a)] + light[static_cast<std::size_t>(b)]), 0.0,
            1.0);
        costs[i] = mesh.lengths[i] * (factorInTheDark + (1.0 - factorInTheDark) * seen) *
                   creaseFactor(mesh.angles[i]);
    }
    return costs;
}

} // namespace unfold3d

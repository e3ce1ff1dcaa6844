#include "Unfold3D/seams/HiddenSeamCosts.h"

#include "Unfold3D/base/BinaryDigits.h"
#include "Unfold3D/seams/MirrorPlane.h"
#include "Unfold3D/seams/Visibility.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace unfold3d
{

namespace
{

/// Factor of an edge that no light reaches; 1 is that of one in full light. Between them it grows
/// by the square of the light: a body has much that is a little in the shade.
constexpr double factorInTheDark = 0.2;
/// An edge counts as a crease from the first angle on, fully from the second, in radians.
constexpr double softCrease = 0.35;
constexpr double hardCrease = 1.2;
constexpr double factorOfValley = 0.4;
constexpr double factorOfRidge = 0.55;
/// Below this angle, in radians, an edge lies in a plane.
constexpr double flatAngle = 1e-3;
constexpr double factorOfFlat = 1.3;
/// An edge in the plane of symmetry, within this share of its length: there one seam serves both
/// sides.
constexpr double factorOfMirrorPlane = 0.75;
constexpr double offMirrorPlane = 0.1;
/// Edges that are alike cost the same whatever the rounding of their positions, so that ways that
/// are alike are ties.
constexpr int digits = 6;

double creaseFactor(double angle)
{
    const double size = std::abs(angle);
    if (size < flatAngle)
        return factorOfFlat;
    const double share = std::clamp((size - softCrease) / (hardCrease - softCrease), 0.0, 1.0);
    return 1.0 + share * ((angle < 0.0 ? factorOfValley : factorOfRidge) - 1.0);
}

} // namespace

std::vector<double> hiddenSeamCosts(const SeamMesh& mesh, std::span<const int> samples,
                                    const RunControl& control)
{
    const std::vector<double> visibility =
        vertexVisibility(mesh.positions, mesh.triangles, samples, control);
    const std::optional<Vec3> mirror = mirrorPlane(mesh.positions, mesh.triangles, samples);
    std::vector<double> costs(mesh.lengths.size());
    for (int e = 0; e < mesh.edgeCount(); ++e) {
        const auto i = static_cast<std::size_t>(e);
        const auto [a, b] = mesh.verticesOf(e);
        const double seen = std::clamp(0.5 * (visibility[static_cast<std::size_t>(a)] +
                                              visibility[static_cast<std::size_t>(b)]),
                                       0.0, 1.0);
        const double light = factorInTheDark + (1.0 - factorInTheDark) * seen * seen;
        const double off =
            mirror ? std::max(std::abs(dot(*mirror, mesh.positions[static_cast<std::size_t>(a)])),
                              std::abs(dot(*mirror, mesh.positions[static_cast<std::size_t>(b)])))
                   : mesh.lengths[i];
        const double place = off < offMirrorPlane * mesh.lengths[i] ? factorOfMirrorPlane : 1.0;
        costs[i] =
            toBinaryDigits(mesh.lengths[i] * light * place * creaseFactor(mesh.angles[i]), digits);
    }
    return costs;
}

} // namespace unfold3d

#include "Unfold3D/seams/SeamCosts.h"

#include "Unfold3D/base/BinaryDigits.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// Radians between the normals up to which an edge counts as the inside of a flat face, and from
/// which on it is as sharp as can be.
constexpr double flatAngle = 1e-3;
constexpr double sharpAngle = 0.8;
/// Costs by length.
constexpr double costOfFlat = 2.0;
constexpr double costOfSmooth = 1.0;
constexpr double costOfSharp = 0.25;
/// Edges that are alike cost the same whatever the rounding of their positions.
constexpr int digits = 8;

double costByAngle(double angle)
{
    const double size = std::abs(angle);
    if (size < flatAngle)
        return costOfFlat;
    return costOfSmooth + (costOfSharp - costOfSmooth) * std::min(size / sharpAngle, 1.0);
}

} // namespace

std::vector<PathCost> shapeCosts(const SeamMesh& mesh)
{
    std::vector<PathCost> costs;
    costs.reserve(mesh.lengths.size());
    for (std::size_t e = 0; e < mesh.lengths.size(); ++e)
        costs.push_back(
            toPathCost(toBinaryDigits(costByAngle(mesh.angles[e]) * mesh.lengths[e], digits)));
    return costs;
}

} // namespace unfold3d

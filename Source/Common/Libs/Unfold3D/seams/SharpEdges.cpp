#include "Unfold3D/seams/SharpEdges.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace unfold3d
{

namespace
{

/// Positions that went through floats shift the angle between two triangles of common shape by up
/// to this.
constexpr double toleranceDegrees = 0.05;

} // namespace

std::vector<char> sharpEdges(const SeamMesh& mesh, double degrees)
{
    const double least = std::max(degrees - toleranceDegrees, toleranceDegrees);
    std::vector<char> isSharp;
    isSharp.reserve(mesh.angles.size());
    for (const double angle : mesh.angles)
        isSharp.push_back(static_cast<char>(std::abs(angle) * 180.0 / std::numbers::pi >= least));
    return isSharp;
}

} // namespace unfold3d

#include "picture/SurfaceShading.h"

#include "document/Vec3Math.h"
#include "picture/Tints.h"

#include <algorithm>
#include <cmath>

namespace uvtool
{
namespace
{

/// Where a face and the mean of its corners' faces differ by more than this cosine there is an
/// edge, which the light has to show.
constexpr double leastSmoothCosine = 0.75;

constexpr double ambient = 0.35;
constexpr Rgb withoutLayout{0.62, 0.62, 0.62};

Rgb rgbOf(const Tint& tint)
{
    const auto bytes = toRgb(tint);
    return {bytes[0] / 255.0, bytes[1] / 255.0, bytes[2] / 255.0};
}

std::vector<std::array<Rgb, 2>> tintsOf(const SurfaceMesh& mesh)
{
    std::int32_t last = -1;
    for (const std::int32_t island : mesh.island)
        last = std::max(last, island);
    std::vector<std::array<Rgb, 2>> tints;
    for (std::int32_t island = 0; island <= last; ++island) {
        const Tint tint = seriesTint(static_cast<std::size_t>(island));
        tints.push_back({rgbOf({0.97, 0.4 * tint.chroma, tint.hue}),
                         rgbOf({0.72, 1.1 * tint.chroma, tint.hue})});
    }
    return tints;
}

/// Sums of what says how large the squares of a checker come out.
struct Scale
{
    double surfaceArea = 0.0;
    double layoutArea = 0.0;
    Vec3d lowest{};
    Vec3d highest{};
};

Scale measure(const SurfaceMesh& mesh)
{
    Scale scale;
    for (std::size_t t = 0; t < mesh.triangleCount(); ++t) {
        if (mesh.island[t] < 0)
            continue;
        const Vec3d normal = areaNormal(mesh.corner(t, 0), mesh.corner(t, 1), mesh.corner(t, 2));
        scale.surfaceArea += std::sqrt(dot(normal, normal));
        const Vec2f* const uv = mesh.uvs.data() + 3 * t;
        scale.layoutArea += std::abs((double(uv[1][0]) - uv[0][0]) * (double(uv[2][1]) - uv[0][1]) -
                                     (double(uv[1][1]) - uv[0][1]) * (double(uv[2][0]) - uv[0][0]));
    }
    if (!mesh.points.empty())
        scale.lowest = scale.highest = mesh.points.front();
    for (const Vec3d& point : mesh.points)
        for (std::size_t i = 0; i < 3; ++i) {
            scale.lowest[i] = std::min(scale.lowest[i], point[i]);
            scale.highest[i] = std::max(scale.highest[i], point[i]);
        }
    return scale;
}

} // namespace

SurfaceShading::SurfaceShading(const SurfaceMesh& mesh, double squaresAlongDiagonal)
    : mesh_(mesh), pointNormals_(mesh.points.size()), tints_(tintsOf(mesh))
{
    faceNormals_.reserve(mesh.triangleCount());
    for (std::size_t t = 0; t < mesh.triangleCount(); ++t) {
        const Vec3d normal = areaNormal(mesh.corner(t, 0), mesh.corner(t, 1), mesh.corner(t, 2));
        for (std::size_t k = 0; k < 3; ++k)
            for (std::size_t i = 0; i < 3; ++i)
                pointNormals_[mesh.triangles[3 * t + k]][i] += normal[i];
        faceNormals_.push_back(normalised(normal));
    }
    const Scale scale = measure(mesh);
    const Vec3d diagonal = difference(scale.highest, scale.lowest);
    const double length = std::sqrt(dot(diagonal, diagonal));
    const double perLength = length > 0.0 ? squaresAlongDiagonal / length : 1.0;
    if (scale.layoutArea > 0.0)
        squaresPerUnit_ = perLength * std::sqrt(scale.surfaceArea / scale.layoutArea);
}

Rgb SurfaceShading::colour(const DepthRaster::Hit& hit, const Vec3d& light) const
{
    const double lit = ambient + (1.0 - ambient) * std::abs(dot(normal(hit), light));
    Rgb colour = paint(hit);
    for (double& channel : colour)
        channel *= lit;
    return colour;
}

Rgb SurfaceShading::paint(const DepthRaster::Hit& hit) const
{
    const std::int32_t island = mesh_.island[hit.triangle];
    if (island < 0)
        return withoutLayout;
    double u = 0.0;
    double v = 0.0;
    for (std::size_t k = 0; k < 3; ++k) {
        const Vec2f& uv = mesh_.uvs[3 * std::size_t{hit.triangle} + k];
        u += double{hit.weights[k]} * double{uv[0]};
        v += double{hit.weights[k]} * double{uv[1]};
    }
    const double square = std::floor(squaresPerUnit_ * u) + std::floor(squaresPerUnit_ * v);
    const bool isDark = std::fmod(square, 2.0) != 0.0;
    return tints_[static_cast<std::size_t>(island)][isDark ? 1 : 0];
}

Vec3d SurfaceShading::normal(const DepthRaster::Hit& hit) const
{
    const Vec3d& face = faceNormals_[hit.triangle];
    Vec3d mean{};
    for (std::size_t k = 0; k < 3; ++k) {
        const Vec3d corner =
            normalised(pointNormals_[mesh_.triangles[3 * std::size_t{hit.triangle} + k]]);
        const Vec3d& smooth = dot(corner, face) < leastSmoothCosine ? face : corner;
        for (std::size_t i = 0; i < 3; ++i)
            mean[i] += double{hit.weights[k]} * smooth[i];
    }
    return normalised(mean);
}

} // namespace uvtool

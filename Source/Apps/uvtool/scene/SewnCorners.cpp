#include "scene/SewnCorners.h"

#include "mesh/EdgeGroups.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>

namespace uvtool
{
namespace
{

/// A geometry, one of its positions, and a UV bit by bit.
using Place = std::array<std::uint32_t, 4>;

Place placeOf(const Document& document, const SceneGeometry& scene, std::size_t corner,
              const Vec2f& uv)
{
    const TriangleSource& source = scene.sourceOfTriangle[corner / 3];
    const DocumentGeometry& geometry = document.geometries[source.geometry];
    const std::uint32_t own = geometry.triangles[std::size_t{3} * source.triangle + corner % 3];
    return {source.geometry, geometry.positions.ofCorner[own], std::bit_cast<std::uint32_t>(uv[0]),
            std::bit_cast<std::uint32_t>(uv[1])};
}

} // namespace

void renewSewnCorners(const Document& document, const SceneGeometry& scene,
                      std::span<const std::uint32_t> sides, std::span<const Vec2f> after,
                      std::span<Vec2f> before)
{
    std::vector<Place> sewn;
    for (const std::uint32_t side : sides)
        for (const std::uint32_t corner : {side, endCorner(side)})
            sewn.push_back(placeOf(document, scene, corner, after[corner]));
    std::sort(sewn.begin(), sewn.end());
    constexpr float noValue = std::numeric_limits<float>::quiet_NaN();
    for (std::size_t i = 0; i < after.size(); ++i)
        if (std::binary_search(sewn.begin(), sewn.end(), placeOf(document, scene, i, after[i])))
            before[i] = {noValue, noValue};
}

} // namespace uvtool

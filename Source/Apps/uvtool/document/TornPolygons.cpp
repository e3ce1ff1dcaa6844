#include "document/TornPolygons.h"

#include "document/PolygonRebuild.h"

#include <algorithm>
#include <vector>

namespace uvtool
{
namespace
{

constexpr std::uint32_t unset = 0xFFFFFFFEU;

/// [polygon] 1 for those whose triangles give a corner different values.
std::vector<char> findTorn(const DocumentGeometry& geometry,
                           std::span<const std::uint32_t> valueOfTriangleCorner)
{
    std::vector<std::uint32_t> valueOfCorner(geometry.cornerCount(), unset);
    std::vector<char> isTorn(geometry.polygonCount(), 0);
    for (std::size_t i = 0; i < geometry.triangles.size(); ++i) {
        std::uint32_t& value = valueOfCorner[geometry.triangles[i]];
        if (value == unset)
            value = valueOfTriangleCorner[i];
        if (value != valueOfTriangleCorner[i])
            isTorn[geometry.polygonOfTriangle[i / 3]] = 1;
    }
    return isTorn;
}

/// Builds the polygons of a geometry anew, torn ones as their triangles.
void splitPolygons(DocumentGeometry& geometry, const std::vector<char>& isTorn)
{
    PolygonRebuild rebuild(geometry);
    std::size_t triangle = 0;
    for (std::size_t p = 0; p < geometry.polygonCount(); ++p) {
        const std::span<const std::uint32_t> triangles = trianglesOfPolygon(geometry, p, triangle);
        triangle += triangles.size() / 3;
        if (isTorn[p] == 0) {
            rebuild.add(p, cornersOfPolygon(geometry, p), triangles);
            continue;
        }
        for (std::size_t i = 0; i < triangles.size(); i += 3)
            rebuild.addTriangle(p, triangles.subspan(i, 3));
    }
    rebuild.store();
}

} // namespace

std::size_t splitTornPolygons(DocumentGeometry& geometry,
                              std::span<const std::uint32_t> valueOfTriangleCorner)
{
    const std::vector<char> isTorn = findTorn(geometry, valueOfTriangleCorner);
    const auto tornCount =
        static_cast<std::size_t>(std::count(isTorn.begin(), isTorn.end(), char{1}));
    if (tornCount > 0)
        splitPolygons(geometry, isTorn);
    return tornCount;
}

} // namespace uvtool

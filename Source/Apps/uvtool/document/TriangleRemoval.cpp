#include "document/TriangleRemoval.h"

#include "document/PolygonRebuild.h"
#include "document/Triangulate.h"

#include <vector>

namespace uvtool
{
namespace
{

using Corners = std::vector<std::uint32_t>;

bool areInOnePlace(const DocumentGeometry& geometry, std::uint32_t a, std::uint32_t b)
{
    return geometry.positions.at(a) == geometry.positions.at(b);
}

/// Each step may bring together what is to go by the next one.
Corners withoutRepeats(const DocumentGeometry& geometry, Corners corners)
{
    std::size_t at = 0;
    for (std::size_t unchanged = 0; unchanged < corners.size() && corners.size() >= 3;) {
        const std::size_t n = corners.size();
        const std::uint32_t before = corners[(at + n - 1) % n];
        // Behind the tip of a spike one more corner is repeated then.
        const bool isTip = areInOnePlace(geometry, before, corners[(at + 1) % n]);
        if (!isTip && !areInOnePlace(geometry, before, corners[at])) {
            at = (at + 1) % n;
            ++unchanged;
            continue;
        }
        corners.erase(corners.begin() + static_cast<std::ptrdiff_t>(at));
        at = (at + n - 2) % (n - 1); // the one before
        unchanged = 0;
    }
    return corners;
}

Corners cut(const DocumentGeometry& geometry, const Corners& corners)
{
    std::vector<Vec3d> positions;
    for (const std::uint32_t corner : corners)
        positions.push_back(geometry.positions.at(corner));
    Corners triangles;
    for (const std::uint32_t k : trianglesOfPolygon(positions))
        triangles.push_back(corners[k]);
    return triangles;
}

bool comeByAPlaceTwice(const DocumentGeometry& geometry, std::span<const std::uint32_t> triangles)
{
    for (std::size_t i = 0; i < triangles.size(); ++i)
        if (areInOnePlace(geometry, triangles[i], triangles[i % 3 == 2 ? i - 2 : i + 1]))
            return true;
    return false;
}

Corners leftOf(std::span<const std::uint32_t> triangles, std::span<const char> isRemoved)
{
    Corners left;
    for (std::size_t i = 0; i < triangles.size(); ++i)
        if (isRemoved[i / 3] == 0)
            left.push_back(triangles[i]);
    return left;
}

/// Calls `add` with each polygon, its triangles and the number of the first of these, and lets the
/// rebuild take the place of the geometry; the number of triangles that there are less.
template <class Add>
std::size_t rebuildPolygons(DocumentGeometry& geometry, const Add& add)
{
    const std::size_t before = geometry.triangleCount();
    PolygonRebuild rebuild(geometry);
    std::size_t first = 0;
    for (std::size_t p = 0; p < geometry.polygonCount(); ++p) {
        const std::span<const std::uint32_t> triangles = trianglesOfPolygon(geometry, p, first);
        add(rebuild, p, triangles, first);
        first += triangles.size() / 3;
    }
    rebuild.store();
    const std::size_t removed = before - geometry.triangleCount();
    geometry.hasLostTriangles = geometry.hasLostTriangles || removed > 0;
    return removed;
}

} // namespace

RemovedTriangles& RemovedTriangles::operator+=(const RemovedTriangles& other)
{
    triangles += other.triangles;
    polygons += other.polygons;
    splitPolygons += other.splitPolygons;
    return *this;
}

RemovedTriangles removeRepeatedCorners(DocumentGeometry& geometry)
{
    RemovedTriangles removed;
    removed.triangles = rebuildPolygons(geometry, [&](PolygonRebuild& rebuild, std::size_t polygon,
                                                      std::span<const std::uint32_t> triangles,
                                                      std::size_t /*first*/) {
        const Corners all = cornersOfPolygon(geometry, polygon);
        const Corners corners = all.size() > 3 ? withoutRepeats(geometry, all) : all;
        if (corners.size() == all.size())
            rebuild.add(polygon, corners, triangles);
        else if (corners.size() >= 3)
            rebuild.add(polygon, corners, cut(geometry, corners));
        else
            ++removed.polygons;
    });
    return removed;
}

RemovedTriangles removeTriangles(DocumentGeometry& geometry, std::span<const char> isRemoved,
                                 FaceKind kind)
{
    RemovedTriangles removed;
    removed.triangles =
        rebuildPolygons(geometry, [&](PolygonRebuild& rebuild, std::size_t polygon,
                                      std::span<const std::uint32_t> triangles, std::size_t first) {
            const Corners left = leftOf(triangles, isRemoved.subspan(first));
            const bool isWhole = left.size() == triangles.size() ||
                                 (kind == PolygonFaces && !comeByAPlaceTwice(geometry, triangles));
            if (left.empty()) {
                ++removed.polygons;
            } else if (isWhole) {
                rebuild.add(polygon, cornersOfPolygon(geometry, polygon), triangles);
            } else {
                for (std::size_t i = 0; i < left.size(); i += 3)
                    rebuild.addTriangle(polygon, std::span(left).subspan(i, 3));
                removed.splitPolygons += kind == PolygonFaces ? 1U : 0U;
            }
        });
    return removed;
}

} // namespace uvtool

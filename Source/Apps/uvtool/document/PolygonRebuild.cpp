#include "document/PolygonRebuild.h"

#include <numeric>
#include <utility>

namespace uvtool
{
namespace
{

template <class T>
void takeCorners(CornerAttribute<T>& attribute, const std::vector<std::uint32_t>& oldCorners)
{
    if (!attribute.exists())
        return;
    std::vector<std::uint32_t> ofCorner;
    ofCorner.reserve(oldCorners.size());
    for (const std::uint32_t corner : oldCorners)
        ofCorner.push_back(attribute.ofCorner[corner]);
    attribute.ofCorner = std::move(ofCorner);
}

} // namespace

std::vector<std::uint32_t> cornersOfPolygon(const DocumentGeometry& geometry, std::size_t polygon)
{
    const std::uint32_t first = geometry.polygonOffsets[polygon];
    std::vector<std::uint32_t> corners(geometry.polygonOffsets[polygon + 1] - first);
    std::iota(corners.begin(), corners.end(), first);
    return corners;
}

std::span<const std::uint32_t> trianglesOfPolygon(const DocumentGeometry& geometry,
                                                  std::size_t polygon, std::size_t first)
{
    std::size_t end = first;
    while (end < geometry.triangleCount() && geometry.polygonOfTriangle[end] == polygon)
        ++end;
    return std::span(geometry.triangles).subspan(3 * first, 3 * (end - first));
}

void PolygonRebuild::add(std::size_t oldPolygon, std::span<const std::uint32_t> corners,
                         std::span<const std::uint32_t> triangles)
{
    for (const std::uint32_t corner : corners) {
        newOfOld_[corner] = static_cast<std::uint32_t>(oldCorners_.size());
        oldCorners_.push_back(corner);
    }
    for (const std::uint32_t corner : triangles)
        triangles_.push_back(newOfOld_[corner]);
    polygonOfTriangle_.insert(polygonOfTriangle_.end(), triangles.size() / 3,
                              static_cast<std::uint32_t>(sources_.size()));
    offsets_.push_back(static_cast<std::uint32_t>(oldCorners_.size()));
    sources_.push_back(geometry_.sourceOfPolygon[oldPolygon]);
    if (!geometry_.materialOfPolygon.empty())
        materials_.push_back(geometry_.materialOfPolygon[oldPolygon]);
}

void PolygonRebuild::store()
{
    takeCorners(geometry_.positions, oldCorners_);
    takeCorners(geometry_.normals, oldCorners_);
    takeCorners(geometry_.colors, oldCorners_);
    for (CornerAttribute<Vec2f>& slot : geometry_.uvs)
        takeCorners(slot, oldCorners_);
    geometry_.polygonOffsets = std::move(offsets_);
    geometry_.sourceOfPolygon = std::move(sources_);
    geometry_.materialOfPolygon = std::move(materials_);
    geometry_.triangles = std::move(triangles_);
    geometry_.polygonOfTriangle = std::move(polygonOfTriangle_);
}

} // namespace uvtool

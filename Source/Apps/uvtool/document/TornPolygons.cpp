#include "document/TornPolygons.h"

#include <algorithm>
#include <utility>
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

/// Builds the polygons of a geometry anew, torn ones as their triangles.
class PolygonSplitter
{
public:
    explicit PolygonSplitter(DocumentGeometry& geometry) : geometry_(geometry) {}

    void split(const std::vector<char>& isTorn)
    {
        std::size_t triangle = 0;
        for (std::size_t p = 0; p < geometry_.polygonCount(); ++p) {
            const std::size_t first = triangle;
            while (triangle < geometry_.triangleCount() &&
                   geometry_.polygonOfTriangle[triangle] == p)
                ++triangle;
            if (isTorn[p] == 0)
                keep(p, first, triangle);
            else
                replace(p, first, triangle);
        }
        store();
    }

private:
    void keep(std::size_t polygon, std::size_t first, std::size_t end)
    {
        const std::uint32_t oldFirst = geometry_.polygonOffsets[polygon];
        const auto newFirst = static_cast<std::uint32_t>(oldCorners_.size());
        for (std::uint32_t c = oldFirst; c < geometry_.polygonOffsets[polygon + 1]; ++c)
            oldCorners_.push_back(c);
        closePolygon(polygon);
        for (std::size_t i = 3 * first; i < 3 * end; ++i)
            triangles_.push_back(geometry_.triangles[i] - oldFirst + newFirst);
        polygonOfTriangle_.insert(polygonOfTriangle_.end(), end - first, lastPolygon());
    }

    void replace(std::size_t polygon, std::size_t first, std::size_t end)
    {
        for (std::size_t t = first; t < end; ++t) {
            for (std::size_t i = 3 * t; i < 3 * t + 3; ++i) {
                triangles_.push_back(static_cast<std::uint32_t>(oldCorners_.size()));
                oldCorners_.push_back(geometry_.triangles[i]);
            }
            closePolygon(polygon);
            polygonOfTriangle_.push_back(lastPolygon());
        }
    }

    void closePolygon(std::size_t oldPolygon)
    {
        offsets_.push_back(static_cast<std::uint32_t>(oldCorners_.size()));
        sources_.push_back(geometry_.sourceOfPolygon[oldPolygon]);
        if (!geometry_.materialOfPolygon.empty())
            materials_.push_back(geometry_.materialOfPolygon[oldPolygon]);
    }

    std::uint32_t lastPolygon() const { return static_cast<std::uint32_t>(sources_.size() - 1); }

    void store()
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

    DocumentGeometry& geometry_;
    std::vector<std::uint32_t> oldCorners_; ///< by new corner
    std::vector<std::uint32_t> offsets_{0};
    std::vector<std::uint32_t> sources_;
    std::vector<std::int32_t> materials_;
    std::vector<std::uint32_t> triangles_;
    std::vector<std::uint32_t> polygonOfTriangle_;
};

} // namespace

std::size_t splitTornPolygons(DocumentGeometry& geometry,
                              std::span<const std::uint32_t> valueOfTriangleCorner)
{
    const std::vector<char> isTorn = findTorn(geometry, valueOfTriangleCorner);
    const auto tornCount =
        static_cast<std::size_t>(std::count(isTorn.begin(), isTorn.end(), char{1}));
    if (tornCount > 0)
        PolygonSplitter(geometry).split(isTorn);
    return tornCount;
}

} // namespace uvtool

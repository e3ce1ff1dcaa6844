#include "OpenSGUtils/DegenerateTriangles.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/IndexEdit.h"
#include "OpenSG/IndexSpan.h"
#include "OpenSG/WritableProperty.h"
#include "OpenSGUtils/kyGeoIndicesStore.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>
#include <vector>

namespace DegenerateTriangles
{

namespace
{

using Edge3d = osg::Vector<double, 3>;

/// The positions of a geometry, packed.
class Points
{
public:
    explicit Points(const osg::GeoPositionsPtr& positions)
    {
        if (const auto packed = osg::dcast<osg::GeoPositions3f>(positions))
            points_ = std::as_const(*packed).values();
        else if (positions)
            points_ = copy_ = positions->getValues();
    }
    Points(const Points&) = delete;
    Points& operator=(const Points&) = delete;

    bool isDegenerate(unsigned int a, unsigned int b, unsigned int c) const
    {
        if (a == b || b == c || c == a)
            return true;
        return std::max({a, b, c}) < points_.size() && isStraight(a, b, c) && isStraight(b, c, a) &&
               isStraight(c, a, b);
    }

private:
    /// Have the edges that meet in the first one no cross product? Where a long edge swallows a
    /// short one in rounding this depends on the corner.
    bool isStraight(unsigned int at, unsigned int b, unsigned int c) const
    {
        return edge(at, b).cross(edge(at, c)) == Edge3d(0, 0, 0);
    }

    Edge3d edge(unsigned int from, unsigned int to) const
    {
        const osg::Pnt3f& p = points_[from];
        const osg::Pnt3f& q = points_[to];
        return Edge3d(double{q.x()} - p.x(), double{q.y()} - p.y(), double{q.z()} - p.z());
    }

    std::vector<osg::Pnt3f> copy_;
    std::span<const osg::Pnt3f> points_;
};

/// Where a triangle stands.
struct Place
{
    unsigned int primitive = 0;
    std::size_t firstCorner = 0;
};

/// Is a primitive a list of triangles? So it is also where no type says what it is.
bool isTriangleList(const osg::GeoPTypesPtr& types, unsigned int primitive)
{
    return !types || primitive >= types->getSize() ||
           types->getValue(primitive) == osg::GeoPrimitive::Triangles;
}

/// The places of the degenerate triangles in their order, up to a number of them; 0 for all.
template <class Id>
std::vector<Place> find(const osg::Geometry& geometry, std::span<const Id> ids, std::size_t most)
{
    const Points points(geometry.getPositions());
    const osg::GeoPTypesPtr types = geometry.getTypes();
    const osg::GeoPLengthsPtr lengths = geometry.getLengths();
    const std::size_t stride = geometry.getCornerStride();
    const std::size_t offset = geometry.getCornerOffset(osg::Geometry::MapPosition);
    const std::size_t cornerCount = ids.size() / stride;
    std::vector<Place> places;
    std::size_t corner = 0;
    for (unsigned int i = 0; i < (lengths ? lengths->getSize() : 1); ++i) {
        const std::size_t rest = cornerCount - corner;
        const std::size_t length =
            lengths ? std::min<std::size_t>(lengths->getValue(i), rest) : rest;
        const std::size_t end = corner + length;
        const bool isList = isTriangleList(types, i);
        for (; isList && corner + 3 <= end; corner += 3) {
            const Id* const first = ids.data() + corner * stride + offset;
            if (!points.isDegenerate(first[0], first[stride], first[2 * stride]))
                continue;
            places.push_back({i, corner});
            if (places.size() == most)
                return places;
        }
        corner = end;
    }
    return places;
}

std::vector<Place> find(const osg::GeometryPtr& geometry, std::size_t most)
{
    if (!geometry || !geometry->getIndices())
        return {};
    return osg::withIndices(geometry->getIndices(),
                            [&](const auto ids) { return find(*geometry, ids, most); });
}

/// Closes the gaps that triangles leave in the index list.
osg::GeoIndicesPtr shrinkIndices(const osg::GeometryPtr& geometry, std::span<const Place> removed)
{
    const osg::GeoIndicesPtr indices = osg::indicesToEdit(geometry, 0);
    const std::size_t stride = geometry->getCornerStride();
    const std::size_t removedSize = 3 * stride * removed.size();
    osg::writeIndices(indices, [&]<class Id>(std::span<Id> ids) {
        auto end = ids.begin() + static_cast<std::ptrdiff_t>(removed[0].firstCorner * stride);
        for (std::size_t i = 0; i < removed.size(); ++i) {
            const std::size_t from = (removed[i].firstCorner + 3) * stride;
            const std::size_t to =
                i + 1 < removed.size() ? removed[i + 1].firstCorner * stride : ids.size();
            end = std::copy(ids.begin() + static_cast<std::ptrdiff_t>(from),
                            ids.begin() + static_cast<std::ptrdiff_t>(to), end);
        }
    });
    indices->resize(indices->getSize() - static_cast<unsigned int>(removedSize));
    return indices;
}

/// Null for a geometry without lengths.
osg::GeoPLengthsPtr shrinkLengths(const osg::GeometryPtr& geometry, std::span<const Place> removed)
{
    if (!geometry->getLengths())
        return {};
    geometry->setLengths(osg::writable(geometry->getLengths()));
    const osg::GeoPLengthsPtr lengths = geometry->getLengths();
    for (const Place& place : removed)
        lengths->setValue(lengths->getValue(place.primitive) - 3, place.primitive);
    return lengths;
}

} // namespace

bool hasAny(const osg::GeometryPtr& geometry)
{
    return !find(geometry, 1).empty();
}

std::size_t remove(const osg::GeometryPtr& geometry)
{
    const std::vector<Place> removed = find(geometry, 0);
    if (removed.empty())
        return 0;
    // Who watches the triangles may drop the lists. Nobody drops constraints.
    const kyGeoIndicesStore lists(geometry, kyGeoIndicesStore::TempIndexLists);
    const osg::GeoPLengthsPtr lengths = shrinkLengths(geometry, removed);
    const osg::GeoIndicesPtr indices = shrinkIndices(geometry, removed);
    osg::notifyChanged(lengths, osg::FieldMask::all());
    osg::notifyChanged(indices, geometry,
                       lengths ? osg::Geometry::IndicesFieldMask | osg::Geometry::LengthsFieldMask
                               : osg::Geometry::IndicesFieldMask);
    lists.restore();
    return removed.size();
}

} // namespace DegenerateTriangles

#include "OpenSGUtils/kyOptimize.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSG/IndexEdit.h"
#include "OpenSG/IndexSpan.h"
#include "OpenSG/TriangleCorners.h"
#include "OpenSGUtils/VertexPropertyEdit.h"
#include "OpenSGUtils/kyGeoIndicesStore.h"

#include <numeric>
#include <span>
#include <vector>

namespace kyOptimize
{

namespace
{

using Ids = std::vector<unsigned int>;

/// The places at which each vertex stands in a list.
std::vector<Ids> placesOfVertices(const Ids& list, unsigned int vertexCount)
{
    std::vector<Ids> places(vertexCount);
    for (unsigned int place = 0; place < list.size(); ++place)
        if (list[place] < vertexCount)
            places[list[place]].push_back(place);
    return places;
}

/// 0, 1, 2 and so on.
void writeNumbers(const osg::GeometryPtr& geometry, unsigned int count)
{
    const osg::GeoIndicesPtr indices = osg::indicesToEdit(geometry, count);
    indices->resize(count);
    osg::writeIndices(
        indices, []<class Id>(std::span<Id> ids) { std::iota(ids.begin(), ids.end(), Id{0}); });
}

void setOneTriangleList(const osg::GeometryPtr& geometry)
{
    const osg::GeoPTypesPtr types = osg::GeoPTypesUI8::create();
    types->addValue(osg::GeoPrimitive::Triangles);
    geometry->setTypes(types);
    const osg::GeoPLengthsPtr lengths = osg::GeoPLengthsUI32::create();
    lengths->addValue(geometry->getIndices()->getSize());
    geometry->setLengths(lengths);
}

void notifyTriangleList(const osg::GeometryPtr& geometry)
{
    osg::notifyChanged(geometry->getTypes(), osg::FieldMask::all());
    osg::notifyChanged(geometry->getLengths(), osg::FieldMask::all());
    osg::notifyChanged(geometry->getIndices(), geometry,
                       osg::Geometry::TypesFieldMask | osg::Geometry::LengthsFieldMask |
                           osg::Geometry::IndicesFieldMask);
}

/// Each corner gets a vertex of its own.
void partCorners(const osg::GeometryPtr& geometry, const Ids& corners)
{
    kyGeoIndicesStore constraints(geometry, kyGeoIndicesStore::UVConstraints);
    const unsigned int oldCount = geometry->getPositions()->getSize();
    writeNumbers(geometry, static_cast<unsigned int>(corners.size()));
    setOneTriangleList(geometry);
    const VertexPropertyEdit edit(geometry,
                                  [&](osg::GeoProperty& property) { property.gather(corners); });
    if (!constraints.isEmpty())
        constraints.map(placesOfVertices(corners, oldCount));
    osg::GeoTmpIndexEditInterface::setNullforAll(geometry);
    edit.notify();
    notifyTriangleList(geometry);
    constraints.restore();
}

/// Triangles name the vertices that are there.
void shareVertices(const osg::GeometryPtr& geometry, const Ids& corners)
{
    osg::indicesToEdit(geometry, geometry->getPositions()->getSize())->setValues(corners);
    setOneTriangleList(geometry);
    notifyTriangleList(geometry);
}

} // namespace

void triangulate(const osg::GeometryPtr& geometry, bool ownVertices)
{
    if (!geometry || !geometry->getPositions() || !geometry->getIndices())
        return;
    geometry->makeSingleIndexed();
    const Ids corners = osg::triangleCorners(*geometry);
    if (corners.empty())
        return;
    if (ownVertices)
        partCorners(geometry, corners);
    else
        shareVertices(geometry, corners);
}

} // namespace kyOptimize

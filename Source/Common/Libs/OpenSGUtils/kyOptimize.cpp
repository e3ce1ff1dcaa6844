#include "OpenSGUtils/kyOptimize.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSG/IndexEdit.h"
#include "OpenSG/IndexSpan.h"
#include "OpenSG/TriangleCorners.h"
#include "OpenSGUtils/EqualVertices.h"
#include "OpenSGUtils/VertexPropertyEdit.h"
#include "OpenSGUtils/kyGeoIndicesStore.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <span>
#include <vector>

namespace kyOptimize
{

namespace
{

using Ids = std::vector<unsigned int>;

unsigned int sizeOf(const Ids& ids)
{
    return static_cast<unsigned int>(ids.size());
}

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
    osg::withIndices(indices,
                     []<class Id>(std::span<Id> ids) { std::iota(ids.begin(), ids.end(), Id{0}); });
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
    writeNumbers(geometry, sizeOf(corners));
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

bool areBelow(const osg::GeoIndicesPtr& indices, unsigned int end)
{
    return osg::withIndices(indices, [end](auto ids) {
        return std::all_of(ids.begin(), ids.end(), [end](unsigned int id) { return id < end; });
    });
}

/// Gives the vertices that are left the order in which the primitives name them.
void orderByFirstUse(JoinedVertices& joined, const osg::GeoIndicesPtr& indices)
{
    constexpr unsigned int notMet = std::numeric_limits<unsigned int>::max();
    Ids placeOf(joined.sources.size(), notMet);
    Ids sources;
    sources.reserve(joined.sources.size());
    const auto meet = [&](unsigned int id) {
        if (placeOf[id] != notMet)
            return;
        placeOf[id] = sizeOf(sources);
        sources.push_back(joined.sources[id]);
    };
    osg::withIndices(indices, [&](auto ids) {
        for (const unsigned int id : ids)
            meet(joined.newIdOf[id]);
    });
    for (unsigned int id = 0; id < placeOf.size(); ++id)
        meet(id);
    joined.sources = std::move(sources);
    for (unsigned int& id : joined.newIdOf)
        id = placeOf[id];
}

bool changesNothing(const JoinedVertices& joined)
{
    return joined.sources.size() == joined.newIdOf.size() &&
           std::is_sorted(joined.sources.begin(), joined.sources.end());
}

/// Keeps the elements of those vertices, and what lies beyond all vertices.
void keepVertices(osg::GeoProperty& property, const Ids& sources, unsigned int vertexCount)
{
    if (property.getSize() <= vertexCount)
        return property.gather(sources);
    Ids elements = sources;
    for (unsigned int element = vertexCount; element < property.getSize(); ++element)
        elements.push_back(element);
    property.gather(elements);
}

void renameVertices(const osg::GeometryPtr& geometry, const Ids& newIdOf)
{
    const osg::GeoIndicesPtr indices = osg::indicesToEdit(geometry, newIdOf.size());
    osg::withIndices(indices, [&]<class Id>(std::span<Id> ids) {
        for (Id& id : ids)
            id = static_cast<Id>(newIdOf[id]);
    });
}

void writeJoined(const osg::GeometryPtr& geometry, const JoinedVertices& joined)
{
    kyGeoIndicesStore constraints(geometry, kyGeoIndicesStore::UVConstraints);
    renameVertices(geometry, joined.newIdOf);
    const auto vertexCount = sizeOf(joined.newIdOf);
    const VertexPropertyEdit edit(geometry, [&](osg::GeoProperty& property) {
        keepVertices(property, joined.sources, vertexCount);
    });
    constraints.map(joined.newIdOf);
    osg::GeoTmpIndexEditInterface::setNullforAll(geometry);
    edit.notify();
    osg::notifyChanged(geometry->getIndices(), geometry, osg::Geometry::IndicesFieldMask);
    constraints.restore();
}

/// The properties that are there of those that were asked for, by their numbers.
std::vector<osg::GeoPropertyPtr>
comparedProperties(const osg::GeometryPtr& geometry,
                   const std::array<bool, osg::Geometry::VertexPropertyCount>& isCompared)
{
    std::vector<osg::GeoPropertyPtr> properties;
    for (unsigned int n = 0; n < isCompared.size(); ++n) {
        const osg::GeoPropertyPtr property = geometry->getVertexProperty(n);
        if (isCompared[n] && property)
            properties.push_back(property);
    }
    return properties;
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

void unifyVertices(const osg::GeometryPtr& geometry, bool compareNormals, bool compareTexCoords,
                   bool compareTexCoords1, bool compareTexCoords2, bool compareTexCoords3,
                   bool compareTexCoords4, bool compareTexCoords5, bool compareTexCoords6,
                   bool compareTexCoords7, bool separateZeros, bool compareColors,
                   bool firstUseOrder)
{
    if (!geometry || !geometry->getPositions())
        return;
    geometry->makeSingleIndexed();
    const unsigned int vertexCount = geometry->getPositions()->getSize();
    if (!areBelow(geometry->getIndices(), vertexCount))
        return;
    const auto properties = comparedProperties(
        geometry, {true, compareNormals, compareColors, compareColors, compareTexCoords,
                   compareTexCoords1, compareTexCoords2, compareTexCoords3, compareTexCoords4,
                   compareTexCoords5, compareTexCoords6, compareTexCoords7});
    JoinedVertices joined = joinEqualVertices(
        properties, vertexCount, separateZeros ? FloatEquality::ByBits : FloatEquality::ByValue);
    if (firstUseOrder)
        orderByFirstUse(joined, geometry->getIndices());
    if (!changesNothing(joined))
        writeJoined(geometry, joined);
}

} // namespace kyOptimize

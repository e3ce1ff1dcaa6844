#include "OpenSGUtils/kyOptimize.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSG/IndexEdit.h"
#include "OpenSG/IndexSpan.h"
#include "OpenSGUtils/EqualVertices.h"
#include "OpenSGUtils/VertexPropertyEdit.h"
#include "OpenSGUtils/kyGeoIndicesStore.h"

#include <algorithm>
#include <array>
#include <limits>
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
    osg::writeIndices(indices, [&]<class Id>(std::span<Id> ids) {
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
    if (geometry->getIndices() && geometry->getIndices()->getEndOfIds() > vertexCount)
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

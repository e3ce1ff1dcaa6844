// How a compact mesh is built from the surfaces of its node.

#include "OpenSG/ChangeNotice.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/compactmesh/ShellArrays.h"
#include "UVUtils/compactmesh/WeldSurfaces.h"
#include "UVUtils/model/PositionOrder.h"

#include <algorithm>

namespace
{

template <class Value>
std::vector<Value> pick(const std::vector<Value>& values, std::span<const unsigned int> ids)
{
    std::vector<Value> picked(ids.size());
    std::transform(ids.begin(), ids.end(), picked.begin(),
                   [&](unsigned int id) { return values[id]; });
    return picked;
}

/// The vertices in the order of their sources; those with the same source keep theirs.
std::vector<unsigned int> orderBySource(const WeldedVertices& vertices,
                                        std::span<const unsigned int> sourceOrder)
{
    const Buckets<unsigned int> verticesOf(sourceOrder.size(), [&](const auto& add) {
        for (unsigned int vertex = 0; vertex < vertices.source.size(); ++vertex)
            add(vertices.source[vertex], vertex);
    });
    std::vector<unsigned int> order;
    order.reserve(vertices.source.size());
    for (const unsigned int source : sourceOrder)
        for (const unsigned int vertex : verticesOf[source])
            order.push_back(vertex);
    return order;
}

/// The property as one of that kind: what is there, or a new one. Held, since a setter for a slot
/// that does not exist holds nothing.
template <class Property>
osg::RefPtr<Property> reuse(const osg::GeoPropertyPtr& present)
{
    const auto property = osg::dcast<Property>(present);
    return osg::RefPtr<Property>(property ? property : Property::create());
}

void fillVertexProperties(osg::Geometry& geometry, unsigned int slot,
                          std::vector<osg::Pnt3f> positions, std::vector<osg::Vec2f> uvs)
{
    const auto points = reuse<osg::GeoPositions3f>(geometry.getPositions());
    geometry.setPositions(points.get());
    points->takeValues(std::move(positions));
    osg::notifyChanged(points, osg::FieldMask::all());

    const auto texCoords = reuse<osg::GeoTexCoords2f>(geometry.getTexSlot(slot));
    for (unsigned int other = 0; other < osg::Geometry::TexSlotCount; ++other)
        if (other != slot)
            geometry.setTexSlot(other, osg::NullFC);
    geometry.setTexSlot(slot, texCoords.get());
    texCoords->takeValues(std::move(uvs));
    osg::notifyChanged(texCoords, osg::FieldMask::all());
}

/// Says that the indices are of triangles, single indexed.
void fillPrimitive(osg::Geometry& geometry)
{
    if (!osg::dcast<osg::GeoPTypesUI8>(geometry.getTypes())) {
        geometry.setTypes(osg::GeoPTypesUI8::create());
        geometry.getTypes()->addValue(osg::GeoPrimitive::Triangles);
    }
    osg::notifyChanged(geometry.getTypes(), osg::FieldMask::all());
    // The same for every slot: readers ask the slot that the mesh holds, not the mapping.
    geometry.setIndexMapping(
        {osg::Geometry::MapPosition | osg::Geometry::MapNormal | osg::Geometry::MapTexCoords});
}

/// The indices are one list.
void fillIndices(osg::Geometry& geometry, std::vector<unsigned int> ids)
{
    const auto indices = reuse<osg::GeoIndicesUI32>(geometry.getIndices());
    geometry.setIndices(indices.get());
    indices->takeValues(std::move(ids));
    osg::notifyChanged(indices, osg::FieldMask::all());

    const auto lengths = reuse<osg::GeoPLengthsUI32>(geometry.getLengths());
    geometry.setLengths(lengths.get());
    lengths->takeValues({indices->getSize()});
    osg::notifyChanged(lengths, osg::FieldMask::all());
}

} // namespace

void CompactShellMesh::initStates(const std::vector<ActiveSurface>& surfaces, kyUVTypes::UVSet set)
{
    slot_ = set;
    const ShellArrays shell = gatherShell(surfaces, set);
    // Each compact vertex takes its position from a vertex of the surfaces: one sort serves both.
    const std::vector<unsigned int> orderF = orderByPosition(shell.positions);
    const WeldedVertices welded = weldSurfaces(shell, orderF);
    const std::vector<unsigned int> order = orderBySource(welded, orderF);
    const std::vector<unsigned int> sources = pick(welded.source, order);

    fillVertexTables(welded, order);
    std::vector<unsigned int> indices = sortAndBuildFaceMappings(shell.triangles);

    fillVertexProperties(*compactGeometry_, static_cast<unsigned int>(set),
                         pick(shell.positions, sources), pick(shell.uvs, sources));
    fillPrimitive(*compactGeometry_);
    fillIndices(*compactGeometry_, std::move(indices));
    osg::notifyChanged(compactGeometry_, osg::FieldMask::all());
    dirty_ = false;
}

void CompactShellMesh::fillVertexTables(const WeldedVertices& welded,
                                        const std::vector<unsigned int>& order)
{
    vertFToC_.assign(welded.members.items().size(), 0);
    for (unsigned int c = 0; c < order.size(); ++c)
        for (const unsigned int vertex : welded.members[order[c]])
            vertFToC_[vertex] = c;
    vertCToF_ = Buckets<unsigned int>(order.size(), [&](const auto& add) {
        for (unsigned int c = 0; c < order.size(); ++c)
            for (const unsigned int vertex : welded.members[order[c]])
                add(c, vertex);
    });
}

#include "UVUtils/editing/CutAlongEdges.h"

#include "OpenSG/IndexEdit.h"
#include "OpenSG/IndexSpan.h"
#include "OpenSGUtils/kyGeoIndicesStore.h"
#include "OpenSGUtils/kyGeoShuffle.h"
#include "UVUtils/editing/CutRings.h"
#include "UVUtils/editing/CutSides.h"
#include "UVUtils/editing/FanOrder.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyTopologyBridge.h"

#include <algorithm>
#include <utility>

namespace
{

void sortIntoFans(CutRings& rings)
{
    FanOrder order;
    for (std::size_t i = 0; i < rings.size(); ++i)
        order.sort(rings[i]);
}

/// The UVs to go by when sides move apart.
std::optional<std::span<const osg::Vec2f>> uvsToMove(const osg::GeometryPtr& geometry,
                                                     bool moveApart, kyUVTypes::UVSet set)
{
    const osg::GeoTexCoords2fPtr slot = uvSlot(geometry, set);
    if (!moveApart || !slot)
        return std::nullopt;
    return std::as_const(*slot).values();
}

/// The new vertices.
struct NewVertices
{
    std::vector<unsigned int> sourceIds; ///< [new vertex] ascending
    std::vector<unsigned int> newIds;    ///< [new vertex] from the old count on
    std::vector<unsigned int> firstNew;  ///< [cut vertex] the id of its first copy
    unsigned int count = 0;              ///< of all vertices
};

NewVertices numberNewVertices(const CutVertices& cut, const std::vector<unsigned int>& copyCounts,
                              unsigned int oldCount)
{
    NewVertices vertices;
    vertices.count = oldCount;
    for (std::size_t i = 0; i < copyCounts.size(); ++i) {
        vertices.firstNew.push_back(vertices.count);
        for (unsigned int copy = 0; copy < copyCounts[i]; ++copy) {
            vertices.sourceIds.push_back(cut.ids[i]);
            vertices.newIds.push_back(vertices.count++);
        }
    }
    return vertices;
}

void copyVertices(const osg::GeometryPtr& geometry, const NewVertices& vertices)
{
    kyGeoShuffle::shuffleProperties(geometry, vertices.sourceIds.data(),
                                    static_cast<unsigned int>(vertices.sourceIds.size()),
                                    vertices.newIds.data(), vertices.count, false);
}

void writeIndices(const osg::GeometryPtr& geometry, const CutRings& rings,
                  const NewVertices& vertices)
{
    const osg::GeoIndicesPtr indices = indicesToEdit(geometry, vertices.count);
    osg::writeIndices(indices, [&]<class Id>(std::span<Id> ids) {
        for (std::size_t i = 0; i < rings.size(); ++i)
            for (const CutCorner& corner : rings[i])
                if (corner.side > 0)
                    ids[corner.place] = static_cast<Id>(vertices.firstNew[i] + corner.side - 1);
    });
    osg::notifyChanged(indices, osg::FieldMask::all());
}

/// The triangles at cut vertices, as they are now.
std::vector<unsigned int> trianglesAt(const CutRings& rings, const osg::GeoIndicesPtr& indices)
{
    std::vector<unsigned int> triangles;
    osg::withIndices(indices, [&](const auto ids) {
        for (const CutCorner& corner : rings.items()) {
            const auto triangle = ids.subspan(corner.place - corner.place % 3, 3);
            triangles.insert(triangles.end(), triangle.begin(), triangle.end());
        }
    });
    return triangles;
}

/// Moves each side of a vertex that was split a little into its direction.
void moveSidesApart(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set, const CutVertices& cut,
                    const CutSides& sides, const NewVertices& vertices)
{
    constexpr float step = 1.1920929e-5F; // a hundred times the distance at which UVs are equal
    const std::span<osg::Vec2f> uvs = uvSlot(geometry, set)->values();
    auto direction = sides.directions.begin();
    for (std::size_t i = 0; i < cut.ids.size(); ++i) {
        if (sides.copyCounts[i] == 0)
            continue;
        for (unsigned int side = 0; side <= sides.copyCounts[i]; ++side, ++direction) {
            const unsigned int vertex = side == 0 ? cut.ids[i] : vertices.firstNew[i] + side - 1;
            if (vertex < uvs.size())
                uvs[vertex] += unitDirection(*direction) * step;
        }
    }
    osg::notifyChanged(uvSlot(geometry, set), osg::FieldMask::all());
}

/// All fields that a vertex split touches.
osg::FieldMask vertexAndIndexFields()
{
    osg::FieldMask mask = osg::Geometry::IndicesFieldMask;
    for (unsigned int n = 0; n < osg::Geometry::VertexPropertyCount; ++n)
        mask |= osg::Geometry::vertexPropertyFieldMask(n);
    return mask;
}

void recordIdentity(const osg::GeometryPtr& geometry, unsigned int vertexCount,
                    TopologyOpOutData& out)
{
    out.storeShuffle({}, {}, vertexCount, vertexCount);
    out.storeBefore(geometry->getIndices(), getUVConstraints(geometry));
    *out.nextIndices = *out.prevIndices; // nobody writes to what a record holds
    *out.nextUVConstraints = *out.prevUVConstraints;
}

} // namespace

void doCutAlongEdges(const osg::GeometryPtr& geometry, const unsigned int* edges,
                     unsigned int count, bool moveApart, kyUVTypes::UVSet set,
                     TopologyOpOutData* out)
{
    if (!edges || count < 2 || !geometry->getIndices() || !geometry->getPositions())
        return;
    const unsigned int oldCount = geometry->getPositions()->getSize();
    const CutVertices cut = collectCutVertices(std::span(edges, count), oldCount);
    CutRings rings = collectCutRings(geometry->getIndices(), oldCount, cut);
    sortIntoFans(rings);
    const auto uvs = uvsToMove(geometry, moveApart, set);
    const CutSides sides = numberSides(cut, rings, uvs);
    const NewVertices vertices = numberNewVertices(cut, sides.copyCounts, oldCount);
    if (vertices.newIds.empty()) {
        if (out)
            recordIdentity(geometry, oldCount, *out);
        return;
    }

    // From here on the geometry is written, and its lists with it: `edges` may be stale.
    kyGeoIndicesStore store(geometry, kyGeoIndicesStore::ListsAndConstraints);
    copyVertices(geometry, vertices);
    if (out) {
        out->storeShuffle(vertices.sourceIds, vertices.newIds, oldCount, vertices.count);
        out->storeBefore(geometry->getIndices(), store.getUVConstraints());
    }
    writeIndices(geometry, rings, vertices);
    if (uvs)
        moveSidesApart(geometry, set, cut, sides, vertices);
    osg::notifyChanged(geometry, vertexAndIndexFields());
    if (!store.isEmpty())
        store.mapCopies(vertices.sourceIds, vertices.newIds, oldCount,
                        trianglesAt(rings, geometry->getIndices()));
    store.restore();
    if (out)
        out->storeAfter(geometry->getIndices(), store.getUVConstraints());
}

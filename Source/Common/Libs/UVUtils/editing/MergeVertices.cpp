#include "UVUtils/editing/MergeVertices.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/IndexEdit.h"
#include "OpenSG/IndexSpan.h"
#include "OpenSG/WritableProperty.h"
#include "OpenSGUtils/kyGeoIndicesStore.h"
#include "OpenSGUtils/kyGeoShuffle.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyTopologyBridge.h"

#include <algorithm>
#include <utility>

namespace
{

osg::Vec2f meanOf(const osg::GeoTexCoords& uvs, std::span<const unsigned int> vertices)
{
    osg::Vec2f sum;
    for (const unsigned int vertex : vertices)
        sum += uvs.getValue(vertex);
    return sum * (1.0F / static_cast<float>(vertices.size()));
}

/// The vertices before and after a merge.
struct VertexMap
{
    std::vector<unsigned int> keptIds;  ///< [new vertex] the old one, ascending
    std::vector<unsigned int> oldToNew; ///< [old vertex]
};

using Merge = std::pair<unsigned int, unsigned int>; ///< a vertex, and the one that it becomes

std::vector<Merge> mergesByVertex(const MergeGroups& groups)
{
    std::vector<Merge> merges;
    for (std::size_t group = 0; group < groups.size(); ++group)
        for (const unsigned int vertex : groups[group].subspan(1))
            merges.emplace_back(vertex, groups[group].front());
    std::sort(merges.begin(), merges.end());
    return merges;
}

VertexMap mapVertices(const MergeGroups& groups, unsigned int vertexCount)
{
    const std::vector<Merge> merges = mergesByVertex(groups);
    VertexMap map;
    map.keptIds.resize(vertexCount - merges.size());
    map.oldToNew.resize(vertexCount);
    unsigned int next = 0;
    unsigned int old = 0;
    const auto keepUpTo = [&](unsigned int end) {
        for (; old < end; ++old) {
            map.keptIds[next] = old;
            map.oldToNew[old] = next++;
        }
    };
    for (const auto& [vertex, survivor] : merges) {
        keepUpTo(vertex);
        map.oldToNew[old++] = map.oldToNew[survivor]; // which is lower, so it is known
    }
    keepUpTo(vertexCount);
    return map;
}

void rewrite(const osg::GeoIndicesPtr& indices, const std::vector<unsigned int>& oldToNew)
{
    osg::writeIndices(indices, [&]<class Id>(std::span<Id> ids) {
        for (Id& id : ids)
            id = static_cast<Id>(oldToNew[id]);
    });
}

} // namespace

void averageUVs(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set, const MergeGroups& groups)
{
    const auto slot = static_cast<unsigned int>(set);
    if (!geometry->getTexSlot(slot))
        return;
    if (groups.size() > 0)
        geometry->setTexSlot(slot, osg::writable(geometry->getTexSlot(slot)).get());
    const osg::GeoTexCoordsPtr uvs = geometry->getTexSlot(slot);
    for (std::size_t group = 0; group < groups.size(); ++group)
        uvs->setValue(meanOf(*uvs, groups[group]), groups[group].front());
    osg::notifyChanged(uvs, osg::FieldMask::all());
}

void removeMergedVertices(const osg::GeometryPtr& geometry, const MergeGroups& groups,
                          TopologyOpOutData* out)
{
    VertexMap map = mapVertices(groups, vertexCountOf(geometry));
    const auto newCount = static_cast<unsigned int>(map.keptIds.size());
    kyGeoIndicesStore store(geometry, kyGeoIndicesStore::ListsAndConstraints);
    kyGeoShuffle::shuffleProperties(geometry, map.keptIds.data(), newCount, nullptr, 0, true);
    if (out)
        out->storeBefore(geometry->getIndices(), store.getUVConstraints());
    const osg::GeoIndicesPtr indices = indicesToEdit(geometry, 0); // no id grows
    rewrite(indices, map.oldToNew);
    osg::notifyChanged(indices, geometry, osg::FieldMask::all());
    store.map(map.oldToNew); // after the notices, which can drop the lists
    store.restore();
    if (out) {
        out->storeAfter(geometry->getIndices(), store.getUVConstraints());
        *out->nextShuffle = std::move(map.keptIds);
        *out->prevShuffle = std::move(map.oldToNew);
    }
}

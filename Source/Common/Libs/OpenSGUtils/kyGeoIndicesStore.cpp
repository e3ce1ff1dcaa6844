#include "OpenSGUtils/kyGeoIndicesStore.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"

#include <algorithm>

namespace
{

constexpr unsigned int pointIds = 1;
constexpr unsigned int edgeIds = 2;
constexpr unsigned int triangleIds = 3;

/// Some lists hold edges or triangles whatever their type says: the application may not have set
/// one.
unsigned int idsPerElement(unsigned int list, unsigned int type)
{
    constexpr unsigned int islandTriangles = 1;
    constexpr unsigned int edgeLists[] = {6, 8, 9, 10};
    if (list == islandTriangles || type == osg::GeoPrimitive::Triangles)
        return triangleIds;
    const bool isEdgeList =
        std::find(std::begin(edgeLists), std::end(edgeLists), list) != std::end(edgeLists);
    return isEdgeList || type == osg::GeoPrimitive::Lines ? edgeIds : pointIds;
}

} // namespace

kyGeoIndicesStore::kyGeoIndicesStore(const osg::GeometryPtr& geometry, StoredData data)
    : geometry_(geometry)
{
    if (data & TempIndexLists)
        copyLists();
    if (data & UVConstraints)
        copyConstraints();
}

void kyGeoIndicesStore::copyLists()
{
    for (const unsigned int number : osg::GeoTmpIndexEditInterface::listsWithContent(geometry_)) {
        const osg::GeoTmpIndexEditInterface list(geometry_, number);
        lists_.push_back({number, list.getType()});
        elements_.push_back(
            {idsPerElement(number, list.getType()), {list.values().begin(), list.values().end()}});
    }
}

void kyGeoIndicesStore::copyConstraints()
{
    const std::vector<UVConstraintData> constraints = getUVConstraints();
    if (constraints.empty() || constraints.front() == UVConstraintData())
        return;
    hasConstraints_ = true;
    elements_.push_back({edgeIds, constraints.front().edgesU});
    elements_.push_back({edgeIds, constraints.front().edgesV});
}

bool kyGeoIndicesStore::isEmpty() const
{
    return std::all_of(elements_.begin(), elements_.end(),
                       [](const ElementList& list) { return list.ids.empty(); });
}

void kyGeoIndicesStore::map(const std::vector<std::vector<unsigned int>>& newIds)
{
    if (!isEmpty())
        mapToCopies(elements_, newIds, geometry_->getIndices());
}

void kyGeoIndicesStore::mapCopies(std::span<const unsigned int> sources,
                                  std::span<const unsigned int> copies, unsigned int oldCount,
                                  std::span<const unsigned int> triangles)
{
    if (!isEmpty())
        mapToCopies(elements_, AddedCopies{sources, copies, oldCount}, triangles);
}

void kyGeoIndicesStore::map(const std::vector<unsigned int>& newIds)
{
    if (!isEmpty())
        mapToOne(elements_, newIds);
}

void kyGeoIndicesStore::restore() const
{
    for (std::size_t i = 0; i < lists_.size(); ++i) {
        osg::GeoTmpIndexEditInterface list(geometry_, lists_[i].number);
        list.setType(lists_[i].type);
        list.assign(elements_[i].ids);
    }
    if (hasConstraints_)
        setUVConstraints(geometry_, {{elements_.end()[-2].ids, elements_.end()[-1].ids}});
}

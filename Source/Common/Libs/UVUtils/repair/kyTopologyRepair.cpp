#include "UVUtils/repair/kyTopologyRepair.h"

#include "OpenSG/FieldContainerFactory.h"
#include "OpenSGUtils/kyGeoIndicesStore.h"
#include "OpenSGUtils/kyGeoShuffle.h"
#include "UVUtils/editing/CutAlongEdges.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/IndexView.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyTopologyBridge.h"
#include "UVUtils/repair/VertexCopies.h"

#include <algorithm>
#include <utility>

namespace
{

bool isFit(const osg::GeometryPtr& geometry)
{
    if (!geometry || !geometry->getIndices())
        return false;
    const osg::GeoIndices& indices = *geometry->getIndices();
    return indices.getSize() % 3 == 0 && indices.getEndOfIds() <= vertexCountOf(geometry);
}

/// The vertices of one group after the other, each once.
class GroupVertices
{
public:
    explicit GroupVertices(unsigned int vertexCount) : lastGroup_(vertexCount, none) {}

    void add(std::span<const unsigned int> vertices)
    {
        for (const unsigned int vertex : vertices) {
            if (lastGroup_[vertex] == group_)
                continue;
            lastGroup_[vertex] = group_;
            vertices_.push_back(vertex);
        }
    }

    /// Those that were added, ascending; begins the next group.
    std::vector<unsigned int> take()
    {
        // Where a group has much of the mesh, all marks are looked through faster than it is
        // sorted.
        if (vertices_.size() > lastGroup_.size() / 16)
            readMarks();
        else
            std::sort(vertices_.begin(), vertices_.end());
        ++group_;
        return std::exchange(vertices_, {});
    }

private:
    void readMarks()
    {
        auto next = vertices_.begin();
        for (unsigned int vertex = 0; vertex < lastGroup_.size(); ++vertex)
            if (lastGroup_[vertex] == group_)
                *next++ = vertex;
    }

    static constexpr unsigned int none = 0xFFFFFFFFU;
    std::vector<unsigned int> lastGroup_; ///< [vertex]
    unsigned int group_ = 0;
    std::vector<unsigned int> vertices_;
};

} // namespace

kyTopologyRepair::kyTopologyRepair(const osg::GeometryPtr& geometry, kyUVTypes::UVSet set)
    : geometryId_(geometry ? geometry->getId() : 0), uvSet_(set)
{}

kyTopologyRepair::~kyTopologyRepair() = default;
kyTopologyRepair::kyTopologyRepair(const kyTopologyRepair& other) = default;
kyTopologyRepair& kyTopologyRepair::operator=(const kyTopologyRepair& other) = default;

osg::GeometryPtr kyTopologyRepair::getGeometry() const
{
    if (geometryId_ == 0)
        return osg::NullFC;
    return osg::dcast<osg::Geometry>(osg::FieldContainerFactory::the()->getContainer(geometryId_));
}

void kyTopologyRepair::buildEdgeData()
{
    if ((dirty_ & EdgesDirty) == 0)
        return;
    edgeTriangles_ = {};
    const osg::GeometryPtr geometry = getGeometry();
    if (isFit(geometry))
        edgeTriangles_ = collectTrianglesOfEdges(IndexView(geometry->getIndices()).ids());
    dirty_ &= ~static_cast<std::uint32_t>(EdgesDirty);
}

void kyTopologyRepair::buildTriangleData()
{
    if ((dirty_ & GroupsDirty) == 0)
        return;
    triangleGroups_ = findTriangleGroups();
    dirty_ &= ~static_cast<std::uint32_t>(GroupsDirty);
}

std::vector<kyTopologyRepair::TriangleGroup> kyTopologyRepair::findTriangleGroups() const
{
    std::vector<TriangleGroup> groups;
    const osg::GeometryPtr geometry = getGeometry();
    if (!isFit(geometry))
        return groups;
    const IndexView indices(geometry->getIndices());
    if (indices.ids().size() != edgeTriangles_.edgeOfSide.size())
        return groups; // the edges are those of other triangles
    std::vector<char> isVisited(indices.ids().size() / 3);
    GroupVertices groupVertices(vertexCountOf(geometry));
    for (unsigned int triangle = 0; triangle < isVisited.size(); ++triangle) {
        if (isVisited[triangle] != 0)
            continue;
        TriangleGroup& group = groups.emplace_back();
        fillTriangleGroup(triangle, group.triangles, isVisited);
        for (const unsigned int member : group.triangles)
            groupVertices.add(getTriangleVertexIds(indices.ids(), member));
        group.vertices = groupVertices.take();
    }
    return groups;
}

/// A flood over shared edges, depth first.
void kyTopologyRepair::fillTriangleGroup(unsigned int seed, std::vector<unsigned int>& group,
                                         std::vector<char>& isVisited) const
{
    isVisited[seed] = 1;
    group.push_back(seed);
    std::vector<unsigned int> stack{seed};
    while (!stack.empty()) {
        const std::size_t firstSide = 3 * std::size_t{stack.back()};
        stack.pop_back();
        for (std::size_t side = firstSide; side < firstSide + 3; ++side) {
            for (const unsigned int triangle : edgeTriangles_.at(edgeTriangles_.edgeOfSide[side])) {
                if (isVisited[triangle] != 0)
                    continue;
                isVisited[triangle] = 1;
                group.push_back(triangle);
                stack.push_back(triangle);
            }
        }
    }
}

std::span<const unsigned int>
kyTopologyRepair::getTriangleVertexIds(std::span<const unsigned int> indices, unsigned int triangle)
{
    return indices.subspan(3 * std::size_t{triangle}, 3);
}

void kyTopologyRepair::makeDirty()
{
    triangleGroups_.clear();
    edgeTriangles_ = {};
    dirty_ = AllDirty;
}

std::vector<unsigned int> kyTopologyRepair::findSingularVertices()
{
    buildEdgeData();
    buildTriangleData();
    std::vector<unsigned int> singular;
    const osg::GeometryPtr geometry = getGeometry();
    if (triangleGroups_.empty() || !geometry)
        return singular;
    std::vector<unsigned int> groupCounts(vertexCountOf(geometry));
    for (const TriangleGroup& group : triangleGroups_)
        for (const unsigned int vertex : group.vertices)
            if (vertex < groupCounts.size())
                ++groupCounts[vertex];
    for (unsigned int vertex = 0; vertex < groupCounts.size(); ++vertex)
        if (groupCounts[vertex] >= 2)
            singular.push_back(vertex);
    return singular;
}

FlatEdgeList kyTopologyRepair::findSingularEdges()
{
    buildEdgeData();
    std::vector<Edge> singular;
    for (unsigned int edge = 0; edge < edgeTriangles_.edges.size(); ++edge)
        if (edgeTriangles_.at(edge).size() >= 3)
            singular.push_back(edgeTriangles_.edges[edge]);
    return flatListOf(singular);
}

unsigned int kyTopologyRepair::fixSingularVertices()
{
    const std::vector<unsigned int> vertices = findSingularVertices();
    fixSingularVertices(vertices, nullptr);
    return static_cast<unsigned int>(vertices.size());
}

unsigned int kyTopologyRepair::fixSingularEdges()
{
    const FlatEdgeList edges = findSingularEdges();
    fixSingularEdges(edges, nullptr);
    return static_cast<unsigned int>(edges.size() / 2);
}

void kyTopologyRepair::fixSingularVertices(const std::vector<unsigned int>& vertices,
                                           kyTopologyBridge* bridge)
{
    const osg::GeometryPtr geometry = getGeometry();
    if (vertices.empty() || triangleGroups_.empty() || !isFit(geometry))
        return;
    const VertexCopies copies = numberCopies(triangleGroups_, vertices, vertexCountOf(geometry));
    kyGeoShuffle::shuffleProperties(geometry, copies.sourceIds.data(),
                                    static_cast<unsigned int>(copies.sourceIds.size()),
                                    copies.newIds.data(), copies.newCount, false);
    const auto out = topLevelOf(bridge);
    if (out) {
        out->storeShuffle(copies.sourceIds, copies.newIds, copies.oldCount, copies.newCount);
        // Constraints stay as they are: a record without any leaves them alone.
        out->storeBefore(geometry->getIndices(), {});
    }
    // A compact mesh that watches drops the lists when it is told of the triangles.
    const kyGeoIndicesStore store(geometry, kyGeoIndicesStore::ListsAndConstraints);
    nameCopies(geometry, triangleGroups_, copies);
    if (out)
        out->storeAfter(geometry->getIndices(), {});
    store.restore();
    makeDirty();
}

void kyTopologyRepair::fixSingularEdges(const FlatEdgeList& edges, kyTopologyBridge* bridge)
{
    const osg::GeometryPtr geometry = getGeometry();
    if (edges.size() < 2 || !isFit(geometry))
        return;
    const auto out = topLevelOf(bridge);
    doCutAlongEdges(geometry, edges.data(), sizeOf(edges), true, uvSet_, out.get());
    makeDirty();
}

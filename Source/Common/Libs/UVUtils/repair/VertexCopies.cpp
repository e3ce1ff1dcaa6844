#include "UVUtils/repair/VertexCopies.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/IndexEdit.h"
#include "OpenSG/IndexSpan.h"

namespace
{

enum Standing : unsigned char
{
    NotListed,
    Listed, ///< and in no group so far
    Kept    ///< by the first group that has it
};

/// Rewrites the corners of one group.
template <class Id>
void renameCorners(std::span<Id> ids, const kyTopologyRepair::TriangleGroup& group,
                   const std::vector<unsigned int>& newIdOf)
{
    for (const unsigned int triangle : group.triangles) {
        const std::size_t first = 3 * std::size_t{triangle};
        for (std::size_t i = first; i < first + 3 && i < ids.size(); ++i)
            if (newIdOf[ids[i]] != 0)
                ids[i] = static_cast<Id>(newIdOf[ids[i]]);
    }
}

} // namespace

VertexCopies numberCopies(std::span<const kyTopologyRepair::TriangleGroup> groups,
                          std::span<const unsigned int> vertices, unsigned int oldCount)
{
    std::vector<Standing> standing(oldCount, NotListed);
    for (const unsigned int vertex : vertices)
        if (vertex < oldCount)
            standing[vertex] = Listed;
    VertexCopies copies;
    copies.oldCount = copies.newCount = oldCount;
    for (unsigned int group = 0; group < groups.size(); ++group) {
        for (const unsigned int vertex : groups[group].vertices) {
            if (vertex >= oldCount || standing[vertex] == NotListed)
                continue;
            if (standing[vertex] == Kept) {
                copies.sourceIds.push_back(vertex);
                copies.newIds.push_back(copies.newCount++);
                copies.groups.push_back(group);
            }
            standing[vertex] = Kept;
        }
    }
    return copies;
}

void nameCopies(const osg::GeometryPtr& geometry,
                std::span<const kyTopologyRepair::TriangleGroup> groups, const VertexCopies& copies)
{
    const osg::GeoIndicesPtr indices = indicesToEdit(geometry, copies.newCount);
    osg::writeIndices(indices, [&]<class Id>(std::span<Id> ids) {
        // A copy is never vertex 0, so 0 stands for none. A corner is renamed once at most, and
        // then names a vertex that has no copy.
        std::vector<unsigned int> newIdOf(copies.newCount);
        for (std::size_t copy = 0; copy < copies.groups.size();) {
            const unsigned int group = copies.groups[copy];
            const std::size_t first = copy;
            for (; copy < copies.groups.size() && copies.groups[copy] == group; ++copy)
                newIdOf[copies.sourceIds[copy]] = copies.newIds[copy];
            renameCorners(ids, groups[group], newIdOf);
            for (std::size_t done = first; done < copy; ++done)
                newIdOf[copies.sourceIds[done]] = 0;
        }
    });
    osg::notifyChanged(indices, geometry, osg::Geometry::IndicesFieldMask);
}

#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <limits>
#include <span>

namespace
{

using osg::Vec2f;

struct UVBounds
{
    static constexpr float Highest = std::numeric_limits<float>::max();
    Vec2f low{Highest, Highest};
    Vec2f high{-Highest, -Highest};

    /// What is no number changes nothing.
    void extend(const Vec2f& uv)
    {
        for (unsigned int axis = 0; axis < 2; ++axis) {
            low[axis] = std::min(low[axis], uv[axis]);
            high[axis] = std::max(high[axis], uv[axis]);
        }
    }
};

/// toSlot  gives the place in the slot of an id that is below idEnd
template <class ToSlot>
UVBounds boundsOf(std::span<const Vec2f> uvs, std::span<const unsigned int> ids, std::size_t idEnd,
                  const ToSlot& toSlot)
{
    UVBounds bounds;
    for (const unsigned int id : ids)
        if (id < idEnd)
            bounds.extend(uvs[toSlot(id)]);
    return bounds;
}

} // namespace

void kyUVUtils::getUVBoundingBox(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                 kyUVTypes::UVSet uvSet, const unsigned int* ids,
                                 unsigned int count, osg::Vector<float, 2>& min,
                                 osg::Vector<float, 2>& max)
{
    const std::span vertices(ids, ids ? count : 0);
    const CompactShellMesh* const mesh = CompactShellMesh::getCMesh(geometry, node, uvSet);
    if (!geometry || (useCMesh(geometry) && !mesh))
        return;
    const osg::GeoTexCoords2fPtr slot = uvSlot(mesh ? mesh->getGeomPtr() : geometry, uvSet);
    if (!slot)
        return;
    const std::span<const Vec2f> uvs = slot->values();
    const UVBounds bounds =
        mesh ? boundsOf(uvs, vertices, mesh->getVertFToC().size(),
                        [mesh](unsigned int id) { return mesh->mapVertFToC(id); })
             : boundsOf(uvs, vertices, uvs.size(), [](unsigned int id) { return id; });
    min = bounds.low;
    max = bounds.high;
}

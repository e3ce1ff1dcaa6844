// UVs moved, scaled and turned: functions of one UV each, in a frame that they share.

#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/VerticesOfMesh.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"

#include <span>

namespace
{

using osg::Vec2f;
using Ids = std::vector<unsigned int>;

/// Gives vertices of a geometry the UVs that a function makes of theirs, one after the other.
template <class Function>
void apply(const Function& newUV, const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
           std::span<const unsigned int> ids)
{
    const osg::GeoTexCoords2fPtr slot = uvSlot(geometry, uvSet);
    if (!slot)
        return;
    const std::span<Vec2f> uvs = slot->values();
    for (const unsigned int id : ids)
        if (id < uvs.size())
            uvs[id] = newUV(uvs[id]);
    notifySlotChanged(geometry, uvSet);
}

/// Writes the UVs of vertices of a mesh to all surfaces that have these vertices.
void writeToSurfaces(const CompactShellMesh& mesh, const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                     const Ids& compactIds)
{
    const osg::GeoTexCoords2fPtr meshSlot = uvSlot(mesh.getGeomPtr(), uvSet);
    if (!meshSlot)
        return;
    const std::span<const Vec2f> meshUVs = meshSlot->values();
    const Ids ids = nodeVerticesOf(mesh, compactIds);
    kyUVUtils::callFuncOnActiveBaseGeometry(
        node, ids.data(), sizeOf(ids), false,
        [&](const osg::NodePtr&, const osg::GeometryPtr& surface, const Ids& localIds,
            const unsigned int& firstId) {
            const osg::GeoTexCoords2fPtr slot = uvSlot(surface, uvSet);
            if (!slot)
                return;
            const std::span<Vec2f> uvs = slot->values();
            for (const unsigned int id : localIds)
                if (id < uvs.size())
                    uvs[id] = meshUVs[mesh.mapVertFToC(firstId + id)];
            notifySlotChanged(surface, uvSet);
        });
}

template <class Function>
void transformUV(const osg::GeometryPtr& geometry, const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                 const unsigned int* ids, unsigned int count, const Function& newUV)
{
    if (!geometry || !ids || count == 0)
        return;
    if (!kyUVUtils::useCMesh(geometry)) {
        apply(newUV, geometry, uvSet, std::span(ids, count));
        return;
    }
    const CompactMeshScope scope(geometry, node, uvSet);
    if (!scope.getMesh())
        return;
    const Ids compactIds = meshVerticesOf(*scope.getMesh(), std::span(ids, count));
    if (compactIds.empty())
        return;
    apply(newUV, scope.getGeometry(), uvSet, compactIds);
    writeToSurfaces(*scope.getMesh(), node, uvSet, compactIds);
}

} // namespace

void kyUVUtils::translateUV(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                            kyUVTypes::UVSet uvSet, const unsigned int* ids, unsigned int count,
                            float du, float dv)
{
    transformUV(geometry, node, uvSet, ids, count,
                [=](const Vec2f& uv) { return Vec2f(uv.x() + du, uv.y() + dv); });
}

void kyUVUtils::scaleUV(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                        kyUVTypes::UVSet uvSet, const unsigned int* ids, unsigned int count,
                        const osg::Vector<float, 2>& center, float scaleU, float scaleV)
{
    transformUV(geometry, node, uvSet, ids, count, [=](const Vec2f& uv) {
        return Vec2f((uv.x() - center.x()) * scaleU + center.x(),
                     (uv.y() - center.y()) * scaleV + center.y());
    });
}

void kyUVUtils::rotateUV(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                         kyUVTypes::UVSet uvSet, const unsigned int* ids, unsigned int count,
                         const osg::Vector<float, 2>& center, float sine, float cosine)
{
    transformUV(geometry, node, uvSet, ids, count, [=](const Vec2f& uv) {
        const float dx = uv.x() - center.x();
        const float dy = uv.y() - center.y();
        return Vec2f(dx * cosine - dy * sine + center.x(), dy * cosine + dx * sine + center.y());
    });
}

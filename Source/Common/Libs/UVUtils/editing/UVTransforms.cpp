// UVs moved, scaled and turned: functions of one UV each, in a frame that they share.

#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/MarkedVertices.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"

#include <span>

namespace
{

using osg::Vec2f;
using Ids = std::vector<unsigned int>;

/// Lets a function change the UVs of vertices of a geometry.
///
/// changeUV       is given u and v by themselves, which compilers keep in registers
/// forEachVertex  calls its argument with each vertex, as often as it is to change
template <class Function, class ForEachVertex>
void apply(const Function& changeUV, const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
           const ForEachVertex& forEachVertex)
{
    const osg::GeoTexCoords2fPtr slot = uvSlot(geometry, uvSet);
    if (!slot)
        return;
    const std::span<Vec2f> uvs = slot->values();
    forEachVertex([&](std::size_t vertex) {
        if (vertex < uvs.size())
            changeUV(uvs[vertex][0], uvs[vertex][1]);
    });
    notifySlotChanged(geometry, uvSet);
}

/// Writes the UVs of vertices of a mesh to all surfaces that have these vertices.
void writeToSurfaces(const CompactShellMesh& mesh, const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                     const MarkedVertices& vertices)
{
    const osg::GeoTexCoords2fPtr meshSlot = uvSlot(mesh.getGeomPtr(), uvSet);
    if (!meshSlot)
        return;
    const std::span<const Vec2f> meshUVs = meshSlot->values();
    const Ids ids = vertices.nodeIds();
    kyUVUtils::callFuncOnActiveBaseGeometry(
        node, ids.data(), sizeOf(ids), false,
        [&](const osg::NodePtr&, const osg::GeometryPtr& surface, const Ids& localIds,
            const unsigned int& firstId) {
            const osg::GeoTexCoords2fPtr slot = uvSlot(surface, uvSet);
            if (!slot)
                return;
            const std::span<Vec2f> uvs = slot->values();
            const auto compactIdOf = std::span(mesh.getVertFToC()).subspan(firstId);
            for (const unsigned int id : localIds)
                if (id < uvs.size())
                    uvs[id] = meshUVs[compactIdOf[id]];
            notifySlotChanged(surface, uvSet);
        });
}

template <class Function>
void transformUV(const osg::GeometryPtr& geometry, const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                 const unsigned int* ids, unsigned int count, const Function& changeUV)
{
    if (!geometry || !ids || count == 0)
        return;
    if (!kyUVUtils::useCMesh(geometry)) {
        apply(changeUV, geometry, uvSet, [=](const auto& change) {
            for (unsigned int i = 0; i < count; ++i)
                change(ids[i]);
        });
        return;
    }
    const CompactMeshScope scope(geometry, node, uvSet);
    if (!scope.getMesh())
        return;
    const MarkedVertices vertices(*scope.getMesh(), std::span(ids, count));
    if (vertices.empty())
        return;
    apply(changeUV, scope.getGeometry(), uvSet, [&](const auto& change) {
        for (std::size_t vertex = 0; vertex < vertices.marks().size(); ++vertex)
            if (vertices.marks()[vertex] != 0)
                change(vertex);
    });
    writeToSurfaces(*scope.getMesh(), node, uvSet, vertices);
}

} // namespace

void kyUVUtils::translateUV(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                            kyUVTypes::UVSet uvSet, const unsigned int* ids, unsigned int count,
                            float du, float dv)
{
    transformUV(geometry, node, uvSet, ids, count, [=](float& u, float& v) {
        u += du;
        v += dv;
    });
}

void kyUVUtils::scaleUV(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                        kyUVTypes::UVSet uvSet, const unsigned int* ids, unsigned int count,
                        const osg::Vector<float, 2>& center, float scaleU, float scaleV)
{
    transformUV(geometry, node, uvSet, ids, count, [=](float& u, float& v) {
        u = (u - center.x()) * scaleU + center.x();
        v = (v - center.y()) * scaleV + center.y();
    });
}

void kyUVUtils::rotateUV(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                         kyUVTypes::UVSet uvSet, const unsigned int* ids, unsigned int count,
                         const osg::Vector<float, 2>& center, float sine, float cosine)
{
    transformUV(geometry, node, uvSet, ids, count, [=](float& u, float& v) {
        const float dx = u - center.x();
        const float dy = v - center.y();
        u = dx * cosine - dy * sine + center.x();
        v = dy * cosine + dx * sine + center.y();
    });
}

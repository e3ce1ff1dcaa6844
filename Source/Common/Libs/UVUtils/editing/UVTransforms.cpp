// UVs moved, scaled and turned: functions of one UV each, in a frame that they share.

#include "UVUtils/compactmesh/CompactMeshScope.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/MarkedVertices.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <span>

namespace
{

using osg::Vec2f;
using Ids = std::span<const unsigned int>;

/// Lets a function change the UVs of a geometry.
template <class Function>
void apply(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet, const Function& changeUVs)
{
    const osg::GeoTexCoords2fPtr slot = uvSlot(geometry, uvSet);
    if (!slot)
        return;
    changeUVs(slot->values());
    notifySlotChanged(geometry, uvSet);
}

/// Those of some vertices, each as often as it is named.
///
/// changeUV  is given u and v by themselves, which compilers keep in registers
template <class Function>
void changeNamed(std::span<Vec2f> uvs, Ids ids, const Function& changeUV)
{
    for (const unsigned int vertex : ids)
        if (vertex < uvs.size())
            changeUV(uvs[vertex][0], uvs[vertex][1]);
}

/// Those of the vertices of a mesh that have a mark, each once.
template <class Function>
void changeMarked(std::span<Vec2f> uvs, const MarkedVertices& vertices, const Function& changeUV)
{
    const auto marks = vertices.marks().first(std::min(uvs.size(), vertices.marks().size()));
    const bool isWhole = vertices.isWholeMesh();
    for (std::size_t vertex = 0; vertex < marks.size(); ++vertex)
        if (isWhole || marks[vertex] != 0)
            changeUV(uvs[vertex][0], uvs[vertex][1]);
}

/// Copies to vertices of a surface the UVs of those vertices of a mesh that have a mark.
void copyMarked(std::span<const Vec2f> meshUVs, const MarkedVertices& vertices, Ids compactIdOf,
                std::span<Vec2f> uvs)
{
    const std::span<const unsigned char> marks = vertices.marks();
    const std::size_t count = std::min(uvs.size(), compactIdOf.size());
    const bool isWhole = vertices.isWholeMesh();
    for (std::size_t i = 0; i < count; ++i)
        if (isWhole || marks[compactIdOf[i]] != 0)
            uvs[i] = meshUVs[compactIdOf[i]];
}

/// [vertex of the surface], as far as the mesh knows them.
Ids compactIdsOf(const CompactShellMesh& mesh, const ActiveSurface& surface)
{
    const Ids all(mesh.getVertFToC());
    const std::size_t first = std::min<std::size_t>(surface.firstId, all.size());
    return all.subspan(first, std::min<std::size_t>(surface.vertexCount, all.size() - first));
}

bool hasAny(const MarkedVertices& vertices, Ids compactIds)
{
    return std::any_of(compactIds.begin(), compactIds.end(),
                       [&](unsigned int id) { return vertices.marks()[id] != 0; });
}

/// Writes the UVs of vertices of a mesh to all surfaces that have these vertices: what
/// callFuncOnActiveBaseGeometry would do with the list of all their ids, without the list.
void writeToSurfaces(const CompactShellMesh& mesh, const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                     const MarkedVertices& vertices)
{
    const osg::GeoTexCoords2fPtr meshSlot = uvSlot(mesh.getGeomPtr(), uvSet);
    if (!meshSlot)
        return;
    for (const ActiveSurface& surface : activeSurfaces(node)) {
        const Ids compactIds = compactIdsOf(mesh, surface);
        if (hasAny(vertices, compactIds))
            apply(surface.geometry, uvSet, [&](std::span<Vec2f> uvs) {
                copyMarked(meshSlot->values(), vertices, compactIds, uvs);
            });
    }
}

template <class Function>
void transformUV(const osg::GeometryPtr& geometry, const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                 const unsigned int* ids, unsigned int count, const Function& changeUV)
{
    if (!geometry || !ids || count == 0)
        return;
    if (!kyUVUtils::useCMesh(geometry)) {
        apply(geometry, uvSet,
              [&](std::span<Vec2f> uvs) { changeNamed(uvs, Ids(ids, count), changeUV); });
        return;
    }
    const CompactMeshScope scope(geometry, node, uvSet);
    if (!scope.getMesh())
        return;
    const MarkedVertices vertices(*scope.getMesh(), std::span(ids, count));
    if (vertices.empty())
        return;
    apply(scope.getGeometry(), uvSet,
          [&](std::span<Vec2f> uvs) { changeMarked(uvs, vertices, changeUV); });
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

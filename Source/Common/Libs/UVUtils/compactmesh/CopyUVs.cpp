#include "UVUtils/compactmesh/CopyUVs.h"

#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/UVSlot.h"

#include <span>

namespace
{

osg::GeoTexCoords2fPtr provideSlot(const osg::GeometryPtr& surface, kyUVTypes::UVSet set)
{
    if (!uvSlot(surface, set))
        surface->setTexSlot(static_cast<unsigned int>(set), osg::GeoTexCoords2f::create());
    return uvSlot(surface, set);
}

} // namespace

void copyUVsToSurfaces(const CompactShellMesh& mesh, const osg::GeometryPtr& geometry,
                       const osg::NodePtr& node, kyUVTypes::UVSet set)
{
    const osg::GeoTexCoords2fPtr meshSlot = uvSlot(mesh.getGeomPtr(), set);
    if (!meshSlot)
        return;
    const std::span<const osg::Vec2f> meshUVs = meshSlot->values();
    const std::span compactIds(mesh.getVertFToC());
    for (const ActiveSurface& surface : activeSurfaces(node)) {
        // A surface beyond the tables was shown or added behind the mesh's back.
        if (surface.vertexCount == 0 || surface.firstId + surface.vertexCount > compactIds.size())
            continue;
        const osg::GeoTexCoords2fPtr slot = provideSlot(surface.geometry, set);
        slot->resize(surface.vertexCount);
        const std::span<osg::Vec2f> uvs = slot->values();
        const auto ids = compactIds.subspan(surface.firstId, surface.vertexCount);
        for (std::size_t i = 0; i < ids.size(); ++i)
            uvs[i] = meshUVs[ids[i]];
        notifySlotChanged(surface.geometry, set);
    }
    osg::notifyChanged(geometry, uvSlotMask(set));
}

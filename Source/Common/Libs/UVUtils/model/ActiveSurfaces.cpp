#include "UVUtils/model/ActiveSurfaces.h"

#include "OpenSG/CoreAs.h"
#include "OpenSGExt/kyGeoUtils.h"
#include "OpenSGExt/kyShellUtils.h"
#include "OpenSGUtils/kyRenderOptions.h"
#include "UVUtils/model/UVSlot.h"

#include <algorithm>
#include <iterator>

std::vector<ActiveSurface> activeSurfaces(const osg::NodePtr& node)
{
    const auto core = osg::coreAs<osg::Geometry>(node);
    if (!core)
        return {};
    if (!kyShellUtils::isShell(core))
        return {{node, core, 0, 0, vertexCountOf(core)}};

    // Read once: all children are judged by the same sides.
    const unsigned int sides = kyRenderOptions::getInstance()->getShowABSideMask();
    std::vector<ActiveSurface> surfaces;
    unsigned int firstId = 0;
    for (unsigned int i = 0; i < node->getNChildren(); ++i) {
        const osg::NodePtr child = node->getChild(i);
        const auto geometry = osg::dcast<osg::Geometry>(child->getCore());
        if (!kyShellUtils::isActiveShellComponent(child, geometry, sides))
            continue;
        surfaces.push_back({child, geometry, i, firstId, vertexCountOf(geometry)});
        firstId += surfaces.back().vertexCount;
    }
    return surfaces;
}

std::vector<ActiveSurface> usableSurfaces(const osg::NodePtr& node)
{
    std::vector<ActiveSurface> surfaces = activeSurfaces(node);
    const bool isPlain = surfaces.size() == 1 && surfaces[0].node == node;
    if (isPlain && kyGeoUtils::checkGeometryCore(surfaces[0].geometry, true) != 0)
        surfaces.clear();
    return surfaces;
}

const ActiveSurface* surfaceOfEdge(const Edge& edge, std::span<const ActiveSurface> surfaces)
{
    const auto next = std::ranges::upper_bound(surfaces, edge.first, {}, &ActiveSurface::firstId);
    if (next == surfaces.begin())
        return nullptr;
    const ActiveSurface& surface = *std::prev(next);
    return edge.second - surface.firstId < surface.vertexCount ? &surface : nullptr;
}

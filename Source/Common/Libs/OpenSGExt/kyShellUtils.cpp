#include "OpenSGExt/kyShellUtils.h"

#include "OpenSG/CoreAs.h"
#include "OpenSG/SurfaceBase.h"
#include "OpenSGExt/kyGeoUtils.h"

#include <set>
#include <vector>

namespace kyShellUtils
{

namespace
{

unsigned int sideOf(const osg::GeometryPtr& surface)
{
    const auto sided = osg::dcast<osg::SurfaceBase>(surface);
    return sided ? sided->getSide() : unsigned{osg::SurfaceBase::SideA};
}

/// The nodes of the shells that a geometry is a surface of, each once.
std::vector<osg::NodePtr> shellsOf(const osg::Geometry& surface)
{
    std::vector<osg::NodePtr> shells;
    std::set<osg::NodePtr> found;
    for (const osg::NodePtr& node : surface.getParents()) {
        const osg::NodePtr shell = node->getParent();
        if (isShell(osg::coreAs<osg::Geometry>(shell)) && found.insert(shell).second)
            shells.push_back(shell);
    }
    return shells;
}

} // namespace

bool isShell(const osg::GeometryPtr& geometry)
{
    return geometry && (geometry->getGeometryType() & osg::Geometry::ShellType) != 0;
}

bool isVisibleShellComponent(const osg::NodePtr& child, const osg::GeometryPtr& surface,
                             unsigned int shownSides)
{
    return child && surface && child->getTravMask() != 0 && (sideOf(surface) & shownSides) != 0;
}

bool isActiveShellComponent(const osg::NodePtr& child, const osg::GeometryPtr& surface,
                            unsigned int shownSides)
{
    return isVisibleShellComponent(child, surface, shownSides) &&
           kyGeoUtils::checkGeometryCore(surface, true) == 0;
}

void forShellsOfComponent(
    const osg::GeometryPtr& surface,
    const std::function<void(const osg::NodePtr&, const osg::GeometryPtr&)>& function)
{
    if (!surface)
        return;
    for (const osg::NodePtr& shell : shellsOf(*surface))
        function(shell, osg::coreAs<osg::Geometry>(shell));
}

} // namespace kyShellUtils

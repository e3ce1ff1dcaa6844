#include "OpenSGExt/kyShellUtils.h"

#include "OpenSG/SurfaceBase.h"

namespace kyShellUtils
{

namespace
{

unsigned int sideOf(const osg::GeometryPtr& surface)
{
    const auto sided = osg::dcast<osg::SurfaceBase>(surface);
    return sided ? sided->getSide() : unsigned{osg::SurfaceBase::SideA};
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

} // namespace kyShellUtils

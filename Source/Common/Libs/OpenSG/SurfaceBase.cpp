#include "OpenSG/SurfaceBase.h"

namespace osg
{

FieldContainerType& SurfaceBase::getClassType()
{
    static auto& type = *new FieldContainerType(
        "SurfaceBase", &Geometry::getClassType(), &SurfaceBase::createContainer,
        {valueField<&SurfaceBase::_side>("side", "SFUInt32", SideFieldMask)});
    return type;
}

} // namespace osg

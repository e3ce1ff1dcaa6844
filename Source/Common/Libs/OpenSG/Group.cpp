#include "OpenSG/Group.h"

namespace osg
{

FieldContainerType& Group::getClassType()
{
    static auto& type =
        *new FieldContainerType("Group", &NodeCore::getClassType(), &Group::createContainer, {});
    return type;
}

} // namespace osg

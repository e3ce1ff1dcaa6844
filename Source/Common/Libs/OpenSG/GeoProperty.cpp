#include "OpenSG/GeoProperty.h"

namespace osg
{

namespace
{

/// The type of a role: abstract, since only its kinds store anything.
FieldContainerType& newRoleType(const char* name)
{
    return *new FieldContainerType(name, &GeoProperty::getClassType(), nullptr, {});
}

} // namespace

FieldContainerType& GeoProperty::getClassType()
{
    static auto& type =
        *new FieldContainerType("GeoProperty", &FieldContainer::getClassType(), nullptr, {});
    return type;
}

FieldContainerType& GeoPositions::getClassType()
{
    static auto& type = newRoleType("GeoPositions");
    return type;
}

FieldContainerType& GeoNormals::getClassType()
{
    static auto& type = newRoleType("GeoNormals");
    return type;
}

FieldContainerType& GeoColors::getClassType()
{
    static auto& type = newRoleType("GeoColors");
    return type;
}

FieldContainerType& GeoTexCoords::getClassType()
{
    static auto& type = newRoleType("GeoTexCoords");
    return type;
}

FieldContainerType& GeoIndices::getClassType()
{
    static auto& type = newRoleType("GeoIndices");
    return type;
}

FieldContainerType& GeoPTypes::getClassType()
{
    static auto& type = newRoleType("GeoPTypes");
    return type;
}

FieldContainerType& GeoPLengths::getClassType()
{
    static auto& type = newRoleType("GeoPLengths");
    return type;
}

} // namespace osg

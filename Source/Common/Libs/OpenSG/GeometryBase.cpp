#include "OpenSG/GeometryBase.h"

#include "OpenSG/Geometry.h"

#include <type_traits>

namespace osg
{

template <unsigned Slot>
void GeometryBase::appendTexSlot(const FieldContainer& container,
                                 std::vector<FieldContainerPtr>& out)
{
    const auto& geometry = static_cast<const GeometryBase&>(container);
    detail::appendContainers(out, geometry._texCoords[Slot]);
}

FieldContainerType& GeometryBase::getClassType()
{
    const auto texSlot = [](const char* name, unsigned slot, FieldDescription::Containers append) {
        return FieldDescription{name,  "SFGeoTexCoordsPtr", texSlotFieldMask(slot), false, nullptr,
                                append};
    };
    static auto& type = *new FieldContainerType(
        "GeometryBase", &NodeCore::getClassType(), nullptr,
        {valueField<&GeometryBase::_geometryType>("geometryType", "SFUInt32",
                                                  GeometryTypeFieldMask),
         containerField<&GeometryBase::_types>("types", "SFGeoPTypesPtr", TypesFieldMask),
         containerField<&GeometryBase::_lengths>("lengths", "SFGeoPLengthsPtr", LengthsFieldMask),
         containerField<&GeometryBase::_indices>("indices", "SFGeoIndicesPtr", IndicesFieldMask),
         valueField<&GeometryBase::_indexMapping>("indexMapping", "MFUInt16",
                                                  IndexMappingFieldMask),
         containerField<&GeometryBase::_positions>("positions", "SFGeoPositionsPtr",
                                                   PositionsFieldMask),
         containerField<&GeometryBase::_normals>("normals", "SFGeoNormalsPtr", NormalsFieldMask),
         containerField<&GeometryBase::_colors>("colors", "SFGeoColorsPtr", ColorsFieldMask),
         containerField<&GeometryBase::_secondaryColors>("secondaryColors", "SFGeoColorsPtr",
                                                         SecondaryColorsFieldMask),
         texSlot("texCoords", 0, &appendTexSlot<0>), texSlot("texCoords1", 1, &appendTexSlot<1>),
         texSlot("texCoords2", 2, &appendTexSlot<2>), texSlot("texCoords3", 3, &appendTexSlot<3>),
         texSlot("texCoords4", 4, &appendTexSlot<4>), texSlot("texCoords5", 5, &appendTexSlot<5>),
         texSlot("texCoords6", 6, &appendTexSlot<6>), texSlot("texCoords7", 7, &appendTexSlot<7>),
         containerField<&GeometryBase::_material>("material", "SFMaterialPtr", MaterialFieldMask)});
    return type;
}

GeoPropertyPtr GeometryBase::getVertexProperty(unsigned n) const
{
    switch (n) {
    case 0:
        return getPositions();
    case 1:
        return getNormals();
    case 2:
        return getColors();
    case 3:
        return getSecondaryColors();
    default:
        return getTexSlot(n - 4);
    }
}

void GeometryBase::setVertexProperty(unsigned n, const GeoPropertyPtr& property)
{
    const auto set = [&property](auto& field) {
        const auto cast = dcast<std::decay_t<decltype(*field)>>(property);
        if (cast != NullFC || property == NullFC)
            field = cast;
    };
    switch (n) {
    case 0:
        return set(_positions);
    case 1:
        return set(_normals);
    case 2:
        return set(_colors);
    case 3:
        return set(_secondaryColors);
    default:
        if (n < VertexPropertyCount)
            set(_texCoords[n - 4]);
    }
}

GeometryPtr GeometryBase::create()
{
    return Geometry::create();
}

} // namespace osg

#include "OpenSG/GeometryBase.h"

#include "OpenSG/Geometry.h"

#include <type_traits>
#include <utility>

namespace osg
{

template <unsigned Slot>
FieldDescription GeometryBase::texSlotField(std::string name)
{
    return {std::move(name),
            "SFGeoTexCoordsPtr",
            texSlotFieldMask(Slot),
            false,
            nullptr,
            [](const FieldContainer& container, std::vector<FieldContainerPtr>& out) {
                const auto& geometry = static_cast<const GeometryBase&>(container);
                detail::appendContainers(out, geometry._texCoords[Slot]);
            },
            [](const FieldContainer& from, FieldContainer& copy,
               const FieldDescription::Replacement& replacementOf) {
                detail::copyContainers(static_cast<const GeometryBase&>(from)._texCoords[Slot],
                                       static_cast<GeometryBase&>(copy)._texCoords[Slot],
                                       replacementOf);
            }};
}

FieldContainerType& GeometryBase::getClassType()
{
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
         texSlotField<0>("texCoords"), texSlotField<1>("texCoords1"), texSlotField<2>("texCoords2"),
         texSlotField<3>("texCoords3"), texSlotField<4>("texCoords4"),
         texSlotField<5>("texCoords5"), texSlotField<6>("texCoords6"),
         texSlotField<7>("texCoords7"),
         containerField<&GeometryBase::_material>("material", "SFMaterialPtr", MaterialFieldMask)});
    return type;
}

void GeometryBase::forgetDerived(FieldMask changedFields)
{
    if (_indices && (changedFields & IndicesFieldMask).any())
        _indices->forgetDerived(changedFields);
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

#pragma once

#include "OpenSG/FieldMask.h"
#include "OpenSG/GeoProperty.h"
#include "OpenSG/Material.h"
#include "OpenSG/NodeCore.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace osg
{

class Geometry;
using GeometryPtr = Ptr<Geometry>;

/// The fields of a geometry core. See Geometry for what they mean together.
///
/// A setter counts a reference of what it is given, releases what was there, and sends no notice.
class GeometryBase : public NodeCore
{
public:
    /// Texture slots, numbered from 0; slot 0 is the field texCoords, slot n texCoordsN.
    static constexpr unsigned TexSlotCount = 8;

    static constexpr unsigned GeometryTypeFieldNumber = NodeCore::NextFieldNumber;
    static constexpr unsigned TypesFieldNumber = GeometryTypeFieldNumber + 1;
    static constexpr unsigned LengthsFieldNumber = GeometryTypeFieldNumber + 2;
    static constexpr unsigned IndicesFieldNumber = GeometryTypeFieldNumber + 3;
    static constexpr unsigned IndexMappingFieldNumber = GeometryTypeFieldNumber + 4;
    static constexpr unsigned PositionsFieldNumber = GeometryTypeFieldNumber + 5;
    static constexpr unsigned NormalsFieldNumber = GeometryTypeFieldNumber + 6;
    static constexpr unsigned ColorsFieldNumber = GeometryTypeFieldNumber + 7;
    static constexpr unsigned SecondaryColorsFieldNumber = GeometryTypeFieldNumber + 8;
    static constexpr unsigned TexCoordsFieldNumber = GeometryTypeFieldNumber + 9;
    static constexpr unsigned MaterialFieldNumber = TexCoordsFieldNumber + TexSlotCount;
    static constexpr unsigned NextFieldNumber = MaterialFieldNumber + 1;

    static constexpr FieldMask GeometryTypeFieldMask = FieldMask::bit(GeometryTypeFieldNumber);
    static constexpr FieldMask TypesFieldMask = FieldMask::bit(TypesFieldNumber);
    static constexpr FieldMask LengthsFieldMask = FieldMask::bit(LengthsFieldNumber);
    static constexpr FieldMask IndicesFieldMask = FieldMask::bit(IndicesFieldNumber);
    static constexpr FieldMask IndexMappingFieldMask = FieldMask::bit(IndexMappingFieldNumber);
    static constexpr FieldMask PositionsFieldMask = FieldMask::bit(PositionsFieldNumber);
    static constexpr FieldMask NormalsFieldMask = FieldMask::bit(NormalsFieldNumber);
    static constexpr FieldMask ColorsFieldMask = FieldMask::bit(ColorsFieldNumber);
    static constexpr FieldMask SecondaryColorsFieldMask =
        FieldMask::bit(SecondaryColorsFieldNumber);
    static constexpr FieldMask TexCoordsFieldMask = FieldMask::bit(TexCoordsFieldNumber);
    static constexpr FieldMask TexCoords1FieldMask = FieldMask::bit(TexCoordsFieldNumber + 1);
    static constexpr FieldMask TexCoords2FieldMask = FieldMask::bit(TexCoordsFieldNumber + 2);
    static constexpr FieldMask TexCoords3FieldMask = FieldMask::bit(TexCoordsFieldNumber + 3);
    static constexpr FieldMask TexCoords4FieldMask = FieldMask::bit(TexCoordsFieldNumber + 4);
    static constexpr FieldMask TexCoords5FieldMask = FieldMask::bit(TexCoordsFieldNumber + 5);
    static constexpr FieldMask TexCoords6FieldMask = FieldMask::bit(TexCoordsFieldNumber + 6);
    static constexpr FieldMask TexCoords7FieldMask = FieldMask::bit(TexCoordsFieldNumber + 7);
    static constexpr FieldMask MaterialFieldMask = FieldMask::bit(MaterialFieldNumber);

    /// Properties with one element for each vertex; their fields have numbers in a row.
    static constexpr unsigned VertexPropertyCount = 4 + TexSlotCount;
    /// The mask of the field of vertex property n; empty beyond the end.
    static constexpr FieldMask vertexPropertyFieldMask(unsigned n)
    {
        return n < VertexPropertyCount ? FieldMask::bit(PositionsFieldNumber + n) : FieldMask();
    }
    /// The mask of a texture slot's field; empty for a number that is no slot.
    static constexpr FieldMask texSlotFieldMask(unsigned slot)
    {
        return slot < TexSlotCount ? FieldMask::bit(TexCoordsFieldNumber + slot) : FieldMask();
    }

    static FieldContainerType& getClassType();
    /// A new osg::Geometry.
    static GeometryPtr create();

    [[nodiscard]] unsigned getGeometryType() const { return _geometryType; }
    void setGeometryType(unsigned type) { _geometryType = type; }

    [[nodiscard]] GeoPTypesPtr getTypes() const { return _types.get(); }
    void setTypes(const GeoPTypesPtr& types) { _types = types; }
    [[nodiscard]] GeoPLengthsPtr getLengths() const { return _lengths.get(); }
    void setLengths(const GeoPLengthsPtr& lengths) { _lengths = lengths; }
    [[nodiscard]] GeoIndicesPtr getIndices() const { return _indices.get(); }
    void setIndices(const GeoIndicesPtr& indices) { _indices = indices; }

    /// Which properties each number of a corner addresses; see Geometry.
    [[nodiscard]] const std::vector<std::uint16_t>& getIndexMapping() const
    {
        return _indexMapping;
    }
    std::vector<std::uint16_t>& getIndexMapping() { return _indexMapping; }
    void setIndexMapping(std::vector<std::uint16_t> mapping) { _indexMapping = std::move(mapping); }

    [[nodiscard]] GeoPositionsPtr getPositions() const { return _positions.get(); }
    void setPositions(const GeoPositionsPtr& positions) { _positions = positions; }
    [[nodiscard]] GeoNormalsPtr getNormals() const { return _normals.get(); }
    void setNormals(const GeoNormalsPtr& normals) { _normals = normals; }
    [[nodiscard]] GeoColorsPtr getColors() const { return _colors.get(); }
    void setColors(const GeoColorsPtr& colors) { _colors = colors; }
    [[nodiscard]] GeoColorsPtr getSecondaryColors() const { return _secondaryColors.get(); }
    void setSecondaryColors(const GeoColorsPtr& colors) { _secondaryColors = colors; }

    /// NullFC for a number above 7.
    [[nodiscard]] GeoTexCoordsPtr getTexSlot(unsigned slot) const
    {
        return slot < TexSlotCount ? _texCoords[slot].get() : GeoTexCoordsPtr();
    }
    /// Does nothing for a number above 7.
    void setTexSlot(unsigned slot, const GeoTexCoordsPtr& texCoords)
    {
        if (slot < TexSlotCount)
            _texCoords[slot] = texCoords;
    }
    [[nodiscard]] GeoTexCoordsPtr getTexCoords() const { return getTexSlot(0); }
    [[nodiscard]] GeoTexCoordsPtr getTexCoords1() const { return getTexSlot(1); }
    [[nodiscard]] GeoTexCoordsPtr getTexCoords2() const { return getTexSlot(2); }
    [[nodiscard]] GeoTexCoordsPtr getTexCoords3() const { return getTexSlot(3); }
    [[nodiscard]] GeoTexCoordsPtr getTexCoords4() const { return getTexSlot(4); }
    [[nodiscard]] GeoTexCoordsPtr getTexCoords5() const { return getTexSlot(5); }
    [[nodiscard]] GeoTexCoordsPtr getTexCoords6() const { return getTexSlot(6); }
    [[nodiscard]] GeoTexCoordsPtr getTexCoords7() const { return getTexSlot(7); }
    void setTexCoords(const GeoTexCoordsPtr& texCoords) { setTexSlot(0, texCoords); }
    void setTexCoords1(const GeoTexCoordsPtr& texCoords) { setTexSlot(1, texCoords); }
    void setTexCoords2(const GeoTexCoordsPtr& texCoords) { setTexSlot(2, texCoords); }
    void setTexCoords3(const GeoTexCoordsPtr& texCoords) { setTexSlot(3, texCoords); }
    void setTexCoords4(const GeoTexCoordsPtr& texCoords) { setTexSlot(4, texCoords); }
    void setTexCoords5(const GeoTexCoordsPtr& texCoords) { setTexSlot(5, texCoords); }
    void setTexCoords6(const GeoTexCoordsPtr& texCoords) { setTexSlot(6, texCoords); }
    void setTexCoords7(const GeoTexCoordsPtr& texCoords) { setTexSlot(7, texCoords); }

    /// The properties with one element for each vertex, by number, for code that treats them all
    /// alike: positions, normals, colors, secondary colors, then the texture slots. Number n has
    /// the Map bit 1 << n. NullFC beyond the end.
    [[nodiscard]] GeoPropertyPtr getVertexProperty(unsigned n) const;
    /// Does nothing for a property of another role and beyond the end.
    void setVertexProperty(unsigned n, const GeoPropertyPtr& property);

    [[nodiscard]] MaterialPtr getMaterial() const { return _material.get(); }
    void setMaterial(const MaterialPtr& material) { _material = material; }

    /// A notice about the indices of a geometry counts as one about the list that it has.
    void forgetDerived(FieldMask changedFields) override;

protected:
    GeometryBase() = default;
    /// The copy shares properties and material.
    GeometryBase(const GeometryBase&) = default;
    ~GeometryBase() override = default;

private:
    template <unsigned Slot>
    static FieldDescription texSlotField(std::string name);

    unsigned _geometryType = 0;
    RefPtr<GeoPTypes> _types;
    RefPtr<GeoPLengths> _lengths;
    RefPtr<GeoIndices> _indices;
    std::vector<std::uint16_t> _indexMapping;
    RefPtr<GeoPositions> _positions;
    RefPtr<GeoNormals> _normals;
    RefPtr<GeoColors> _colors;
    RefPtr<GeoColors> _secondaryColors;
    std::array<RefPtr<GeoTexCoords>, TexSlotCount> _texCoords;
    RefPtr<Material> _material;
};

using GeometryBasePtr = Ptr<GeometryBase>;

} // namespace osg

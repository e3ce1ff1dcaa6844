#pragma once

#include "OpenSG/ConcreteContainer.h"
#include "OpenSG/GeometryBase.h"
#include "OpenSG/TmpIndexList.h"

#include <cstdint>

namespace osg
{

class TriangleIterator;

/// A mesh, or a shell.
///
/// Indices hold the corners of the primitives one after another. The index mapping says what a
/// corner's numbers mean: with none or one entry the geometry is single indexed, one number for
/// each corner, which addresses all vertex properties. With k > 1 entries each corner has k numbers
/// in a row, and number j addresses the properties whose Map bits are set in entry j.
///
/// Types and lengths give each primitive a code of GeoPrimitive and a count of corners. Without
/// both, the indices are one list of triangles.
///
/// A geometry whose type has the value ShellType set is a shell: it has no mesh of its own, and its
/// surfaces are the geometry cores of its node's children.
class Geometry : public ConcreteContainer<Geometry, GeometryBase>
{
public:
    /// A value (not a number of a bit) of getGeometryType.
    static constexpr unsigned ShellType = 2;

    /// Bits of an entry of the index mapping.
    enum IndexMap : std::uint16_t
    {
        MapPosition = 1,
        MapNormal = 2,
        MapColor = 4,
        MapSecondaryColor = 8,
        MapTexCoords = 16,
        MapTexCoords1 = 32,
        MapTexCoords2 = 64,
        MapTexCoords3 = 128,
        MapTexCoords4 = 256,
        MapTexCoords5 = 512,
        MapTexCoords6 = 1024,
        MapTexCoords7 = 2048
    };

    /// The bit of a texture slot; 0 for a number that is no slot.
    static constexpr std::uint16_t texSlotMapping(unsigned slot)
    {
        return slot < TexSlotCount ? static_cast<std::uint16_t>(MapTexCoords << slot)
                                   : std::uint16_t{0};
    }

    static FieldContainerType& getClassType();

    /// How many numbers a corner has in the index list: 1, or the size of the index mapping.
    [[nodiscard]] unsigned getCornerStride() const;
    /// Which of a corner's numbers addresses the property with that Map bit. 0 for a single
    /// indexed geometry and for a property that no entry maps.
    [[nodiscard]] unsigned getCornerOffset(std::uint16_t mapBit) const;

    /// Gives a multi-indexed geometry one number for each corner; every corner keeps its values.
    ///
    /// There is one vertex for each distinct combination of numbers, in order of first use, and one
    /// mapping entry that joins the masks. A number beyond a property's end reads as zero, numbers
    /// that do not fill a corner are dropped, and a property that no entry maps stays as it is.
    /// Notices go out for the properties, then for the geometry. A property that others hold too
    /// is replaced, any other one rewritten in place.
    ///
    /// On a single-indexed geometry, or one without indices, nothing happens and nothing is told.
    /// Linear in the size of the index list.
    void makeSingleIndexed();

    /// The triangles in the order of the indices; see TriangleIterator.
    [[nodiscard]] TriangleIterator beginTriangles() const;
    [[nodiscard]] TriangleIterator endTriangles() const;

protected:
    friend ConcreteContainer<Geometry, GeometryBase>;
    friend class GeoTmpIndexEditInterface;

    Geometry() = default;
    /// The copy has no temporary lists.
    Geometry(const Geometry& other) : ConcreteContainer(other) {}
    ~Geometry() override = default;

private:
    TmpIndexLists _tmpIndexLists;
};

} // namespace osg

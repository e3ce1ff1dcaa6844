#pragma once

#include "OpenSG/Color.h"
#include "OpenSG/GeoPropertyBase.h"
#include "OpenSG/Vector.h"

#include <atomic>
#include <cstdint>
#include <span>
#include <vector>

namespace osg
{

/// What all kinds of one role share: elements are read and written as one type of value, whatever
/// is stored. A stored element with more components keeps the rest on a write and drops it on a
/// read; missing components read as zero, a missing opacity as 1. A number too large for the
/// stored type is stored as that type's largest.
template <class Role, class RoleValue>
class GeoPropertyRole : public GeoProperty
{
public:
    using Value = RoleValue;

    /// Zero beyond the end.
    [[nodiscard]] virtual Value getValue(unsigned i) const = 0;
    /// Does nothing beyond the end.
    virtual void setValue(const Value& value, unsigned i) = 0;
    virtual void addValue(const Value& value) = 0;

    /// All elements at once, in one pass.
    [[nodiscard]] virtual std::vector<Value> getValues() const = 0;
    /// Takes the size of the values and writes them all. Must not alias the property's own data.
    virtual void setValues(std::span<const Value> values) = 0;

    /// A new property of the same kind with the same elements and count 0.
    [[nodiscard]] Ptr<Role> clone() const { return dcast<Role>(this->shallowCopy()); }

protected:
    GeoPropertyRole() = default;
    GeoPropertyRole(const GeoPropertyRole&) = default;
    ~GeoPropertyRole() override = default;
};

class GeoPositions : public GeoPropertyRole<GeoPositions, Pnt3f>
{
public:
    static FieldContainerType& getClassType();
};

class GeoNormals : public GeoPropertyRole<GeoNormals, Vec3f>
{
public:
    static FieldContainerType& getClassType();
};

class GeoColors : public GeoPropertyRole<GeoColors, Color4f>
{
public:
    static FieldContainerType& getClassType();
};

class GeoTexCoords : public GeoPropertyRole<GeoTexCoords, Vec2f>
{
public:
    static FieldContainerType& getClassType();
};

/// Numbers of vertices; with k entries in the index mapping, k numbers for each corner.
///
/// The list remembers how far its numbers go, since every operation on a mesh asks. Every function
/// that writes forgets it, and so does one that hands out a way to write (values() and getData() of
/// a list that is not const). Who writes through such a span or pointer after somebody has asked
/// tells of it with notifyChanged, as after every write: for the list, or for its geometry with
/// IndicesFieldMask. Reading through a const list keeps the memory (see withIndices).
class GeoIndices : public GeoPropertyRole<GeoIndices, unsigned>
{
public:
    static FieldContainerType& getClassType();

    /// One more than the largest number in the list, 0 for an empty list: a mesh with fewer
    /// vertices has corners that name none. Linear in the list the first time after a write, then
    /// at once. Any number of threads may ask at once while nobody writes: each finds the same.
    [[nodiscard]] std::uint64_t getEndOfIds() const;

    void forgetDerived(FieldMask changedFields) override;

protected:
    GeoIndices() = default;
    GeoIndices(const GeoIndices& other) : GeoPropertyRole(other) {}
    ~GeoIndices() override = default;

private:
    static constexpr std::int64_t NotKnown = -1;

    /// Atomic for the threads that ask at once and store what each has found. It publishes nothing
    /// but itself, so that relaxed order will do.
    mutable std::atomic<std::int64_t> _endOfIds = NotKnown;
};

/// One code of GeoPrimitive for each primitive.
class GeoPTypes : public GeoPropertyRole<GeoPTypes, unsigned>
{
public:
    static FieldContainerType& getClassType();
};

/// The number of corners of each primitive.
class GeoPLengths : public GeoPropertyRole<GeoPLengths, unsigned>
{
public:
    static FieldContainerType& getClassType();
};

/// Codes of primitives, in GeoPTypes and as the type of a temporary index list.
struct GeoPrimitive
{
    enum Code : unsigned
    {
        Points = 0,
        Lines = 1,
        LineLoop = 2,
        LineStrip = 3,
        Triangles = 4,
        TriangleStrip = 5,
        TriangleFan = 6,
        Quads = 7,
        QuadStrip = 8,
        Polygon = 9
    };
};

using GeoPositionsPtr = Ptr<GeoPositions>;
using GeoNormalsPtr = Ptr<GeoNormals>;
using GeoColorsPtr = Ptr<GeoColors>;
using GeoTexCoordsPtr = Ptr<GeoTexCoords>;
using GeoIndicesPtr = Ptr<GeoIndices>;
using GeoPTypesPtr = Ptr<GeoPTypes>;
using GeoPLengthsPtr = Ptr<GeoPLengths>;

} // namespace osg

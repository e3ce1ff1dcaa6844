#pragma once

#include "OpenSG/FieldContainer.h"

#include <span>

namespace osg
{

/// The base of every property of a geometry: one packed array of equal elements.
///
/// Three levels: GeoProperty (any property, as bytes), the role (GeoPositions, GeoTexCoords, ...:
/// values of one type whatever is stored), and the kind (GeoPositions3f, ...: what is stored).
/// Code that touches many elements casts to the kind once and works on values() or getData().
///
/// No operation of a property sends a notice; see notifyChanged.
class GeoProperty : public FieldContainer
{
public:
    static constexpr unsigned ValuesFieldNumber = FieldContainer::NextFieldNumber;
    static constexpr unsigned NextFieldNumber = ValuesFieldNumber + 1;
    static constexpr FieldMask ValuesFieldMask = FieldMask::bit(ValuesFieldNumber);

    static FieldContainerType& getClassType();

    [[nodiscard]] virtual unsigned getSize() const = 0;
    /// New elements are zero.
    virtual void resize(unsigned size) = 0;
    virtual void clear() = 0;

    /// Element i becomes the old element sourceIds[i]; the size becomes that of sourceIds, which
    /// may name elements any number of times. A source beyond the end reads as zero.
    virtual void gather(std::span<const unsigned> sourceIds) = 0;

    /// Bytes from one element to the next.
    [[nodiscard]] virtual unsigned getStride() const = 0;
    /// The packed elements; may be null when there are none. A resize makes it stale.
    [[nodiscard]] const void* getData() const { return getRawData(); }
    void* getData()
    {
        forgetDerived(ValuesFieldMask);
        return const_cast<void*>(getRawData());
    }

protected:
    GeoProperty() = default;
    GeoProperty(const GeoProperty&) = default;
    ~GeoProperty() override = default;

    [[nodiscard]] virtual const void* getRawData() const = 0;
};

using GeoPropertyPtr = Ptr<GeoProperty>;

} // namespace osg

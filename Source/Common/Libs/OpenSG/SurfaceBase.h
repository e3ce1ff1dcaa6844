#pragma once

#include "OpenSG/Geometry.h"

namespace osg
{

/// A geometry that an application generates and regenerates; it remembers which side of the body
/// it covers.
class SurfaceBase : public ConcreteContainer<SurfaceBase, Geometry>
{
public:
    enum Side : unsigned
    {
        SideA = 1,
        SideB = 2
    };

    static constexpr unsigned SideFieldNumber = Geometry::NextFieldNumber;
    static constexpr unsigned NextFieldNumber = SideFieldNumber + 1;
    static constexpr FieldMask SideFieldMask = FieldMask::bit(SideFieldNumber);

    static FieldContainerType& getClassType();

    [[nodiscard]] unsigned getSide() const { return _side; }
    void setSide(unsigned side) { _side = side; }

protected:
    friend ConcreteContainer<SurfaceBase, Geometry>;

    SurfaceBase() = default;
    SurfaceBase(const SurfaceBase&) = default;
    ~SurfaceBase() override = default;

private:
    unsigned _side = SideA;
};

using SurfaceBasePtr = Ptr<SurfaceBase>;

} // namespace osg

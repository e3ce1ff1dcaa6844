#pragma once

#include "OpenSG/Matrix.h"

#include <bit>
#include <cstdint>

/// The six sides of the box that a triplanar projection looks from, by the numbers of their axes
/// (see the table at kyUVTriplanarProjection). Any other number is taken for axis 2. In a mask axis
/// a is the bit 1 << a.
namespace triplanar
{

constexpr int axisCount = 6;

/// The axis itself, or 2 for a number that is none.
inline unsigned int knownAxis(int axis)
{
    return axis >= 0 && axis < axisCount ? static_cast<unsigned int>(axis) : 2;
}

/// The rotation that takes the plane of an image, with U along x, V along y and z towards the
/// viewer, to its side of the box.
osg::Matrix getAxisToZ(int axis);

/// The axis that a direction follows most: its largest component, the later of equal ones. The
/// zero vector gives 5, as one of NaNs does; one with a NaN among numbers gives any axis.
///
/// m  the direction in which a triangle is looked at from outside, its normal negated
int getAxis(const osg::Vec3f& m);

/// The axes from which a direction of length 1 differs by less than 60 degrees, as a mask: one to
/// three. A shorter one may have none, and so does one of NaNs.
unsigned char getAxisCandidatesMask(const osg::Vec3f& m);

/// How many axes are in a mask.
inline int countAxes(unsigned char mask)
{
    return std::popcount(mask);
}

inline bool hasSeveralAxes(unsigned char mask)
{
    return (mask & (mask - 1)) != 0;
}

/// The lowest axis of a mask that isn't empty.
inline int lowestAxis(unsigned char mask)
{
    return std::countr_zero(mask);
}

/// The bit of an axis.
inline unsigned char maskOf(int axis)
{
    return static_cast<unsigned char>(1U << knownAxis(axis));
}

} // namespace triplanar

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

/// The rotation that takes the plane of an image, with U along x, V along y and z towards the
/// viewer, to its side of the box.
osg::Matrix getAxisToZ(int axis);

/// The axis that a direction follows most: its largest component, the later of equal ones. The
/// zero vector, and one that is not a number, give 5.
///
/// m  the direction in which a triangle is looked at from outside, its normal negated
int getAxis(const osg::Vec3f& m);

/// The axes from which a direction of length 1 differs by less than 60 degrees, as a mask: one to
/// three, none for the zero vector.
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

inline unsigned char maskOf(int axis)
{
    return static_cast<unsigned char>(1U << static_cast<unsigned int>(axis));
}

} // namespace triplanar

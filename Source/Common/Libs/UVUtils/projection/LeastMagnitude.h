#pragma once

#include "OpenSG/Vector.h"

#include <cmath>

/// The least magnitude of a scale, a repeat and an angle that something is divided by.
inline constexpr float LeastFactor = 1e-6F;

/// The value, or `least` with the value's sign where its magnitude is not even that. The sign of a
/// zero counts, and so does that of a NaN, of which no magnitude is large enough.
template <class T>
T withLeastMagnitude(T value, T least)
{
    return std::abs(value) >= least ? value : std::copysign(least, value);
}

/// The same for each component.
inline osg::Vec3f withLeastMagnitude(const osg::Vec3f& value, float least)
{
    return osg::Vec3f(withLeastMagnitude(value.x(), least), withLeastMagnitude(value.y(), least),
                      withLeastMagnitude(value.z(), least));
}

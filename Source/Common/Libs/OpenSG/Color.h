#pragma once

#include "OpenSG/Tuple.h"

namespace osg
{

/// Red, green, blue; floats run from 0 to 1.
template <class T>
class Color3 : public Tuple<T, 3>
{
public:
    using Tuple<T, 3>::Tuple;

    constexpr T red() const { return (*this)[0]; }
    constexpr T green() const { return (*this)[1]; }
    constexpr T blue() const { return (*this)[2]; }
};

/// Red, green, blue and opacity. Starts as all zero, transparent black.
template <class T>
class Color4 : public Tuple<T, 4>
{
public:
    using Tuple<T, 4>::Tuple;

    constexpr T red() const { return (*this)[0]; }
    constexpr T green() const { return (*this)[1]; }
    constexpr T blue() const { return (*this)[2]; }
    constexpr T alpha() const { return (*this)[3]; }
};

using Color3f = Color3<float>;
using Color4f = Color4<float>;

} // namespace osg

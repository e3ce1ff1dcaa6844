#pragma once

#include "OpenSG/Matrix.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

/// Random values for the tests of vectors, matrices and rotations, and comparisons with them.
namespace mathtest
{

/// Rounding of a handful of float operations on numbers of size 1.
constexpr float Rounding = 2e-6F;

inline float number(int range)
{
    return static_cast<float>(*rc::gen::inRange(-1000 * range, 1000 * range + 1)) / 1000.0F;
}

inline osg::Vec3f vector(int range)
{
    const float x = number(range);
    const float y = number(range);
    return osg::Vec3f(x, y, number(range));
}

/// Of norm 1, all directions and angles.
inline osg::Quaternion rotation()
{
    const osg::Vec3f axis = vector(1);
    return osg::Quaternion::fromAxisAngle(axis, static_cast<double>(number(7)));
}

/// Whether every component is within a tolerance of that of the other.
template <class A>
testing::AssertionResult isNear(const A& actual, const A& expected, float tolerance)
{
    for (unsigned i = 0; i < A::Size; ++i)
        if (!(std::abs(actual[i] - expected[i]) <= tolerance))
            return testing::AssertionFailure()
                   << "component " << i << " is " << actual[i] << " in place of " << expected[i];
    return testing::AssertionSuccess();
}

inline testing::AssertionResult isNear(const osg::Matrix& actual, const osg::Matrix& expected,
                                       float tolerance)
{
    for (unsigned column = 0; column < 4; ++column)
        for (unsigned row = 0; row < 4; ++row)
            if (!(std::abs(actual(row, column) - expected(row, column)) <= tolerance))
                return testing::AssertionFailure()
                       << "(" << row << ", " << column << ") is " << actual(row, column)
                       << " in place of " << expected(row, column);
    return testing::AssertionSuccess();
}

} // namespace mathtest

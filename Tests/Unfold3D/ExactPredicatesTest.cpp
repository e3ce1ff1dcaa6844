#include "Unfold3D/base/ExactPredicates.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstdint>

using namespace unfold3d;

namespace
{

TEST(ExactPredicates, TellTheSideOfPointsOneUlpFromALine)
{
    const Vec2 a{0.5, 0.5};
    const Vec2 b{12.0, 12.0};
    for (const double x : {0.5, 0.7, 3.3, 24.0, 1e-3, 1e10}) {
        EXPECT_EQ(orient2d(a, b, {x, x}), 0);
        EXPECT_EQ(orient2d(a, b, {x, std::nextafter(x, 1e30)}), 1);
        EXPECT_EQ(orient2d(a, b, {std::nextafter(x, 1e30), x}), -1);
    }
}

// Integers below 2^26 have exact products in 64 bits, which is an independent judge; the common
// offset of a power of two keeps them exact and makes the plain determinant round.
RC_GTEST_PROP(ExactPredicates, AgreeWithIntegersAndDoNotDependOnTheOrder, ())
{
    const auto coordinate = [] { return *rc::gen::inRange<std::int64_t>(-1000, 1000); };
    std::int64_t p[3][2];
    Vec2 v[3];
    for (int i = 0; i < 3; ++i) {
        p[i][0] = coordinate();
        p[i][1] = coordinate();
        v[i] = {std::ldexp(1.0, 40) + static_cast<double>(p[i][0]),
                static_cast<double>(p[i][1]) - std::ldexp(1.0, 42)};
    }
    const std::int64_t det =
        (p[1][0] - p[0][0]) * (p[2][1] - p[0][1]) - (p[1][1] - p[0][1]) * (p[2][0] - p[0][0]);
    const int sign = (det > 0) - (det < 0);
    RC_ASSERT(orient2d(v[0], v[1], v[2]) == sign);
    RC_ASSERT(orient2d(v[1], v[2], v[0]) == sign);
    RC_ASSERT(orient2d(v[1], v[0], v[2]) == -sign);
}

} // namespace

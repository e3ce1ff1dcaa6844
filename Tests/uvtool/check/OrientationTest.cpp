#include "check/Orientation.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace uvtool
{
namespace
{

using Point = std::array<float, 2>;
struct Whole
{
    std::int64_t x, y;
};

Point scaled(Whole p, int xExponent, int yExponent)
{
    return {std::ldexp(float(p.x), xExponent), std::ldexp(float(p.y), yExponent)};
}

RC_GTEST_PROP(Orientation, IsExactForNearlyStraightTurnsAtEveryScale, ())
{
    // Whole numbers that fit a float's 24 bits: the determinant fits an int64.
    const auto number = [] { return *rc::gen::inRange<std::int64_t>(-2000, 2000); };
    const Whole a{number() * 1000, number() * 1000};
    const Whole step{number(), number()};
    const auto nudge = [] { return *rc::gen::inRange<std::int64_t>(-1, 2); };
    const Whole b{a.x + 900 * step.x + nudge(), a.y + 900 * step.y + nudge()};
    const Whole c{a.x - 1300 * step.x + nudge(), a.y - 1300 * step.y + nudge()};
    const std::int64_t turn = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);

    const int xScale = *rc::gen::inRange(-140, 100);
    const int yScale = *rc::gen::inRange(-140, 100);
    RC_ASSERT(orientation(scaled(a, xScale, yScale), scaled(b, xScale, yScale),
                          scaled(c, xScale, yScale)) == (turn > 0) - (turn < 0));
}

} // namespace
} // namespace uvtool

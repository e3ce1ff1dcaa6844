#include "Unfold3D/parameterisation/TriangleEnergy.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <random>

using namespace unfold3d;

namespace
{

using Corners = std::array<Vec2, 3>;

/// A rest triangle and a layout of it, neither degenerate.
struct Sample
{
    RestTriangle rest;
    Corners corners;
};

Sample sampleOf(unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> size(0.3, 2.0);
    std::uniform_real_distribution<double> place(-2.0, 2.0);
    Sample sample{{size(random), place(random), size(random)}, {}};
    do
        for (Vec2& corner : sample.corners)
            corner = {place(random), place(random)};
    while (doubleArea(sample.corners[0], sample.corners[1], sample.corners[2]) < 0.3);
    return sample;
}

TriangleMap mapOf(const TriangleMetric& metric, const Corners& c)
{
    return {metric, c[1] - c[0], c[2] - c[0]};
}

/// From the singular values as the definition has them.
double energyOf(const TriangleMetric& metric, const Corners& c)
{
    const TriangleMap map = mapOf(metric, c);
    const double s1 = length(map.a) + length(map.b);
    const double s2 = length(map.a) - length(map.b);
    return metric.area * (s1 * s1 + s2 * s2 + 1.0 / (s1 * s1) + 1.0 / (s2 * s2));
}

TriangleDerivatives derivativesOf(const TriangleMetric& metric, const Corners& c, Curvature kind)
{
    return {metric, mapOf(metric, c), kind};
}

double component(Vec2 v, int i)
{
    return i == 0 ? v.x : v.y;
}

Corners moved(Corners corners, int coordinate, double by)
{
    Vec2& corner = corners[static_cast<std::size_t>(coordinate / 2)];
    (coordinate % 2 == 0 ? corner.x : corner.y) += by;
    return corners;
}

double hessianEntry(const TriangleDerivatives& d, const double (&curvature)[4], int i, int j)
{
    double sum = 0.0;
    for (int m = 0; m < 4; ++m)
        sum +=
            curvature[m] * component(d.mode[m][i / 2], i % 2) * component(d.mode[m][j / 2], j % 2);
    return sum;
}

// Without its clamp at zero the twist's curvature completes the Hessian; the others never are
// negative.
RC_GTEST_PROP(TriangleEnergy, SlopeModesAndCurvaturesAreThoseOfTheEnergy, (unsigned seed))
{
    const Sample sample = sampleOf(seed);
    const TriangleMetric metric(sample.rest);
    const TriangleDerivatives d = derivativesOf(metric, sample.corners, Curvature::Exact);
    const TriangleDerivatives capped = derivativesOf(metric, sample.corners, Curvature::Capped);
    for (int m = 0; m < 4; ++m) {
        RC_ASSERT(capped.curvature[m] >= 0.0);
        RC_ASSERT(d.curvature[m] >= capped.curvature[m]);
    }
    const TriangleMap map = mapOf(metric, sample.corners);
    const double s1 = length(map.a) + length(map.b);
    const double s2 = length(map.a) - length(map.b);
    const double twist = 2.0 - 2.0 * (s1 * s1 - s1 * s2 + s2 * s2) / (s1 * s2 * s1 * s2 * s1 * s2);
    const double whole[4] = {d.curvature[0], d.curvature[1], metric.area * twist, d.curvature[3]};
    RC_ASSERT(std::abs(d.curvature[2] - std::max(whole[2], 0.0)) < 1e-6 * d.curvature[3]);

    constexpr double h = 1e-5;
    double largest = 0.0;
    for (int i = 0; i < 6; ++i)
        largest = std::max(largest, std::abs(hessianEntry(d, whole, i, i)));
    for (int j = 0; j < 6; ++j) {
        const Corners up = moved(sample.corners, j, h);
        const Corners down = moved(sample.corners, j, -h);
        const double slope = (energyOf(metric, up) - energyOf(metric, down)) / (2.0 * h);
        RC_ASSERT(std::abs(slope - component(d.slope[j / 2], j % 2)) <
                  1e-4 * (1.0 + length(d.slope[j / 2]) + energyOf(metric, sample.corners)));
        const auto dUp = derivativesOf(metric, up, Curvature::Exact);
        const auto dDown = derivativesOf(metric, down, Curvature::Exact);
        for (int i = 0; i < 6; ++i) {
            const double change = component(dUp.slope[i / 2] - dDown.slope[i / 2], i % 2);
            RC_ASSERT(std::abs(change / (2.0 * h) - hessianEntry(d, whole, i, j)) < 1e-4 * largest);
        }
    }
}

TEST(TriangleEnergy, AccurateCrossKeepsTheSignOfNeedles)
{
    // 1 + 2^-52 and its neighbours: the products agree in all bits that a double has.
    const double e = 0x1p-52;
    EXPECT_EQ(accurateCross({1.0 + e, 1.0}, {1.0, 1.0 - e}), -e * e);
    EXPECT_EQ(accurateCross({1.0 + e, 1.0}, {1.0 + 2.0 * e, 1.0 + e}), e * e);
}

} // namespace

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
    TriangleMetric metric;
    Corners corners;
};

Sample sampleOf(std::mt19937& random, bool mayBeFlipped)
{
    std::uniform_real_distribution<double> size(0.3, 2.0);
    std::uniform_real_distribution<double> place(-2.0, 2.0);
    Sample sample{TriangleMetric({size(random), place(random), size(random)}), {}};
    double area = 0.0;
    do {
        for (Vec2& corner : sample.corners)
            corner = {place(random), place(random)};
        area = doubleArea(sample.corners[0], sample.corners[1], sample.corners[2]);
    } while ((mayBeFlipped ? std::abs(area) : area) < 0.3);
    return sample;
}

TriangleMap mapOf(const TriangleMetric& metric, const Corners& c)
{
    return {metric, c[1] - c[0], c[2] - c[0]};
}

/// From the singular values as the definition has them.
double energyOf(const Sample& sample, const LayoutEnergy& energy)
{
    const TriangleMap map = mapOf(sample.metric, sample.corners);
    const double s1 = length(map.a) + length(map.b);
    const double s2 = length(map.a) - length(map.b);
    const double J = s1 * s2;
    const double chi = 0.5 * (J + std::sqrt(J * J + energy.softness * energy.softness));
    if (energy.isConformal)
        return sample.metric.area * (s1 - s2) * (s1 - s2);
    if (energy.allowsFlips())
        return sample.metric.area * (s1 * s1 + s2 * s2 + J * J + 1.0) / chi;
    const double lengths = s1 * s1 + s2 * s2 + 1.0 / (s1 * s1) + 1.0 / (s2 * s2);
    const double angles = 2.0 * (s1 / s2 + s2 / s1);
    return sample.metric.area * (energy.lengths * lengths + (1.0 - energy.lengths) * angles);
}

TriangleDerivatives derivativesOf(const Sample& sample, const LayoutEnergy& energy, Curvature kind)
{
    return {sample.metric, mapOf(sample.metric, sample.corners), energy, kind};
}

double component(Vec2 v, int i)
{
    return i == 0 ? v.x : v.y;
}

Sample moved(Sample sample, int coordinate, double by)
{
    Vec2& corner = sample.corners[static_cast<std::size_t>(coordinate / 2)];
    (coordinate % 2 == 0 ? corner.x : corner.y) += by;
    return sample;
}

double hessianEntry(const TriangleDerivatives& d, const double (&curvature)[4], int i, int j)
{
    double sum = 0.0;
    for (int m = 0; m < 4; ++m)
        sum +=
            curvature[m] * component(d.mode[m][i / 2], i % 2) * component(d.mode[m][j / 2], j % 2);
    return sum;
}

// Without their clamp at zero the curvatures complete the Hessian.
RC_GTEST_PROP(TriangleEnergy, SlopeModesAndCurvaturesAreThoseOfTheEnergy, (unsigned seed))
{
    std::mt19937 random(seed);
    const LayoutEnergy energies[] = {{1.0}, {0.0}, {0.4}, {1.0, 0.5}, {1.0, 2.0}, {1.0, 0.0, true}};
    const LayoutEnergy energy = energies[seed % std::size(energies)];
    const Sample sample = sampleOf(random, energy.allowsFlips());
    const TriangleDerivatives d = derivativesOf(sample, energy, Curvature::Exact);
    const TriangleDerivatives capped = derivativesOf(sample, energy, Curvature::Capped);
    const ModeDerivatives modes(mapOf(sample.metric, sample.corners), energy, Curvature::Exact);
    double whole[4];
    for (int m = 0; m < 4; ++m) {
        whole[m] = sample.metric.area * modes.curvature[m];
        RC_ASSERT(d.curvature[m] == std::max(whole[m], 0.0));
        RC_ASSERT(capped.curvature[m] >= 0.0);
        RC_ASSERT(!energy.isLengthsOnly() || d.curvature[m] >= capped.curvature[m]);
    }

    constexpr double h = 1e-5;
    double largest = 0.0;
    for (int i = 0; i < 6; ++i)
        largest = std::max(largest, std::abs(hessianEntry(d, whole, i, i)));
    for (int j = 0; j < 6; ++j) {
        const Sample up = moved(sample, j, h);
        const Sample down = moved(sample, j, -h);
        const double slope = (energyOf(up, energy) - energyOf(down, energy)) / (2.0 * h);
        RC_ASSERT(std::abs(slope - component(d.slope[j / 2], j % 2)) <
                  1e-4 * (1.0 + length(d.slope[j / 2]) + energyOf(sample, energy)));
        const auto dUp = derivativesOf(up, energy, Curvature::Exact);
        const auto dDown = derivativesOf(down, energy, Curvature::Exact);
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

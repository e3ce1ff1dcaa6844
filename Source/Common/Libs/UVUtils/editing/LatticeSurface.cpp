#include "UVUtils/editing/LatticeSurface.h"

#include <cassert>

namespace
{

using Numbers = LatticeSurface::Numbers;

/// Runs an operation for each register; unrolled by compilers.
template <class Operation>
void forEachRegister(const Operation& operation)
{
    for (unsigned int k = 0; k < LatticeSurface::Registers; ++k)
        operation(k);
}

DoubleLanes lanesOf(double value)
{
    return DoubleLanes{value, value};
}

Numbers numbersOf(double value)
{
    Numbers numbers;
    numbers.fill(lanesOf(value));
    return numbers;
}

void addProduct(Numbers& sum, const Numbers& factors, double value)
{
    const DoubleLanes lanes = lanesOf(value);
    forEachRegister([&](unsigned int k) { sum[k] += factors[k] * lanes; });
}

} // namespace

LatticeSurface::Direction::Direction(double lowEnd, double highEnd,
                                     const std::vector<unsigned int>& coefficients)
    : low(lowEnd), extent(highEnd - lowEnd), binomials(coefficients.begin(), coefficients.end())
{}

LatticeSurface::LatticeSurface(const LatticeGrid& grid, std::span<const osg::Vec2f> controlPoints)
    : u_(grid.min.x(), grid.max.x(), grid.binomials[grid.resU - 1]),
      v_(grid.min.y(), grid.max.y(), grid.binomials[grid.resV - 1])
{
    assert(controlPoints.size() == u_.binomials.size() * v_.binomials.size());
    controlPoints_.reserve(controlPoints.size());
    for (const osg::Vec2f& point : controlPoints)
        controlPoints_.push_back({double{point.x()}, double{point.y()}});
}

/// b[i] = binomial(n, i) * s^i * (1 - s)^(n - i), the powers multiplied up from both ends.
void LatticeSurface::fillBernstein(const Direction& direction, const Numbers& values, Bernstein& b)
{
    const std::size_t count = direction.binomials.size();
    Numbers s;
    forEachRegister([&](unsigned int k) {
        s[k] = (values[k] - lanesOf(direction.low)) / lanesOf(direction.extent);
    });
    Numbers power = numbersOf(1);
    for (std::size_t i = 0; i < count; ++i)
        forEachRegister([&](unsigned int k) {
            b[i][k] = lanesOf(direction.binomials[i]) * power[k];
            power[k] *= s[k];
        });
    power = numbersOf(1);
    for (std::size_t i = count; i-- > 0;)
        forEachRegister([&](unsigned int k) {
            b[i][k] *= power[k];
            power[k] *= lanesOf(1) - s[k];
        });
}

LatticeSurface::Points LatticeSurface::evaluate(const Points& uvs) const
{
    Bernstein bu; // not filled with zeros: most of it is beyond the grid
    Bernstein bv;
    fillBernstein(u_, uvs.u, bu);
    fillBernstein(v_, uvs.v, bv);
    Points sum;
    const auto* point = controlPoints_.data();
    for (std::size_t j = 0; j < v_.binomials.size(); ++j) {
        Points row;
        for (std::size_t i = 0; i < u_.binomials.size(); ++i, ++point) {
            addProduct(row.u, bu[i], (*point)[0]);
            addProduct(row.v, bu[i], (*point)[1]);
        }
        forEachRegister([&](unsigned int k) {
            sum.u[k] += bv[j][k] * row.u[k];
            sum.v[k] += bv[j][k] * row.v[k];
        });
    }
    return sum;
}

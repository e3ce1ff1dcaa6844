#include "UVUtils/projection/TriplanarAxes.h"

#include <array>
#include <cmath>

namespace triplanar
{

namespace
{

/// A component of the plane's coordinates, and its sign.
struct Source
{
    unsigned int component;
    float sign;
};

/// [axis] what becomes x, y and z
constexpr std::array<std::array<Source, 3>, axisCount> planeToBox{{
    {{{2, -1.F}, {0, -1.F}, {1, 1.F}}},
    {{{0, 1.F}, {2, -1.F}, {1, 1.F}}},
    {{{0, -1.F}, {1, 1.F}, {2, -1.F}}},
    {{{2, 1.F}, {0, 1.F}, {1, 1.F}}},
    {{{0, -1.F}, {2, 1.F}, {1, 1.F}}},
    {{{0, 1.F}, {1, 1.F}, {2, 1.F}}},
}};

unsigned int largestComponent(const osg::Vec3f& m)
{
    const float x = std::abs(m.x());
    const float y = std::abs(m.y());
    const float z = std::abs(m.z());
    if (x > y)
        return x > z ? 0 : 2;
    return y > z ? 1 : 2;
}

} // namespace

osg::Matrix getAxisToZ(int axis)
{
    const std::array<Source, 3>& sources = planeToBox[knownAxis(axis)];
    osg::Matrix matrix = osg::Matrix::scaling(osg::Vec3f(0, 0, 0));
    for (unsigned int row = 0; row < 3; ++row)
        matrix(row, sources[row].component) = sources[row].sign;
    return matrix;
}

int getAxis(const osg::Vec3f& m)
{
    const unsigned int component = largestComponent(m);
    return static_cast<int>(m[component] > 0.F ? component : component + 3);
}

unsigned char getAxisCandidatesMask(const osg::Vec3f& m)
{
    constexpr float leastCosine = 0.5F; // of 60 degrees
    unsigned int mask = 0;
    for (unsigned int k = 0; k < 3; ++k) {
        mask |= (m[k] > leastCosine ? 1U : 0U) << k;
        mask |= (-m[k] > leastCosine ? 1U : 0U) << (k + 3);
    }
    return static_cast<unsigned char>(mask);
}

} // namespace triplanar

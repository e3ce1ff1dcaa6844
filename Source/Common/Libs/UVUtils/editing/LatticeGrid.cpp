#include "UVUtils/editing/LatticeGrid.h"

#include <algorithm>
#include <cmath>

namespace
{

double factorial(unsigned int n)
{
    double product = 1;
    for (unsigned int i = 2; i <= n; ++i)
        product *= i;
    return product;
}

std::vector<unsigned int> binomialsOf(unsigned int n)
{
    std::vector<unsigned int> row(n + 1, 1);
    for (unsigned int j = 1; j < n; ++j)
        row[j] = static_cast<unsigned int>(factorial(n) / (factorial(j) * factorial(n - j)));
    return row;
}

bool isResPossible(unsigned int res)
{
    return res >= 2 && res <= LatticeGrid::MaxRes;
}

bool isExtentPossible(float min, float max)
{
    return min < max && std::isfinite(min) && std::isfinite(max);
}

} // namespace

bool LatticeGrid::isPossible(unsigned int resU, unsigned int resV, const osg::Vec2f& min,
                             const osg::Vec2f& max)
{
    return isResPossible(resU) && isResPossible(resV) && isExtentPossible(min.x(), max.x()) &&
           isExtentPossible(min.y(), max.y());
}

void LatticeGrid::setUp(unsigned int newResU, unsigned int newResV, const osg::Vec2f& newMin,
                        const osg::Vec2f& newMax)
{
    resU = newResU;
    resV = newResV;
    min = newMin;
    max = newMax;
    while (binomials.size() < std::max(resU, resV))
        binomials.push_back(binomialsOf(static_cast<unsigned int>(binomials.size())));
}

#include "UVUtils/projection/CylinderWrap.h"

#include "UVUtils/model/DegreesRadians.h"

#include <cmath>

namespace
{

bool areFarApart(float a, float b)
{
    return std::abs(a - b) >= PiF;
}

void bringTo(float& alone, float a, float b)
{
    alone += a < 0 && b < 0 ? -TwoPiF : TwoPiF;
}

} // namespace

void closeOverSeam(std::array<float, 3>& angles)
{
    auto& [a0, a1, a2] = angles;
    const bool far01 = areFarApart(a0, a1);
    const bool far02 = areFarApart(a0, a2);
    const bool far12 = areFarApart(a1, a2);
    if (far01 && far02)
        bringTo(a0, a1, a2);
    else if (!far01 && !far02 && !far12)
        return;
    else if (far01 && far12)
        bringTo(a1, a0, a2);
    else
        bringTo(a2, a0, a1);
}

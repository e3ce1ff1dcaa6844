#pragma once

#include "OpenSG/Vector.h"
#include "UVUtils/model/FloatOrder.h"

#include <array>
#include <limits>

/// What two vertices must have in common to be welded: position and UV.
struct WeldKey
{
    osg::Pnt3f position;
    osg::Vec2f uv;
};

/// Numbers that differ by at most this are one number; absolute, for positions and UVs alike.
inline constexpr float weldTolerance = std::numeric_limits<float>::epsilon();

inline bool isNear(float a, float b)
{
    return isWithin(a, b, weldTolerance);
}

inline bool isNear(const osg::Pnt3f& a, const osg::Pnt3f& b)
{
    return isNear(a[0], b[0]) && isNear(a[1], b[1]) && isNear(a[2], b[2]);
}

/// The order of the weld table. Keys near in position are one point, where UVs decide: near in both
/// u and v they are equal, else u, then v orders them. Elsewhere x, y, z order them.
///
/// With tolerance only where keys are near, it is no strict weak order as soon as a key stands
/// between two near ones: then what a sorted container finds depends on what it holds already.
struct WeldKeyLess
{
    bool operator()(const WeldKey& a, const WeldKey& b) const
    {
        if (!isNear(a.position, b.position))
            return isLess(a.position, b.position);
        if (isNear(a.uv[0], b.uv[0]) && isNear(a.uv[1], b.uv[1]))
            return false;
        return isLess(a.uv, b.uv);
    }

private:
    template <class Components>
    static bool isLess(const Components& a, const Components& b)
    {
        for (unsigned i = 0; i < Components::Size; ++i)
            if (orderedBits(a[i]) != orderedBits(b[i]))
                return orderedBits(a[i]) < orderedBits(b[i]);
        return false;
    }
};

#pragma once

#include "OpenSG/Vector.h"

namespace osg
{

/// A plane through a point, with a side that its normal points to.
class Plane
{
public:
    /// The normal may have any length. One shorter than Vec3f::ShortestLength is kept as it is, so
    /// that a normal of zero puts every point at distance 0.
    Plane(const Vec3f& normal, const Pnt3f& point) : _normal(normal), _point(point)
    {
        const double length = _normal.length();
        if (length >= static_cast<double>(Vec3f::ShortestLength))
            _normal *= 1 / length;
    }

    /// Of length 1, unless it was too short.
    [[nodiscard]] Vec3f getNormal() const { return Vec3f(_normal); }

    /// Above 0 on the side of the normal. Computed in double.
    [[nodiscard]] double distance(const Pnt3f& p) const
    {
        return _normal.dot(Point<double, 3>(p) - _point);
    }

private:
    Vector<double, 3> _normal;
    Point<double, 3> _point;
};

} // namespace osg

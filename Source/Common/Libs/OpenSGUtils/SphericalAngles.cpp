#include "OpenSGUtils/kyNodeUtils.h"

#include <cmath>

namespace kyNodeUtils
{

osg::Vec3f cartesianToSpherical(float x, float y, float z)
{
    const osg::Vector<double, 3> v(x, y, z);
    const double fromZAxis = std::hypot(v.x(), v.y());
    // Of two coordinates both times: the arc cosine of one has no digits left near the z axis.
    const double azimuth = fromZAxis > 0 ? std::atan2(v.y(), v.x()) : 0;
    const double polar = std::atan2(fromZAxis, v.z());
    return osg::Vec3f(azimuth, polar, std::hypot(fromZAxis, v.z()));
}

} // namespace kyNodeUtils

#include "MeshUtils/kyPointOnGeometry.h"

namespace
{

/// The weighted sum of a property's values at the three vertices.
template <class Sum, class Property>
Sum blend(const kyPointOnGeometry& point, const Property& property)
{
    Sum sum;
    if (!property)
        return sum;
    const unsigned int size = property->getSize();
    for (unsigned int k = 0; k < 3; ++k) {
        if (point.vertices[k] >= size)
            continue;
        const auto value = property->getValue(point.vertices[k]);
        for (unsigned int i = 0; i < Sum::Size; ++i)
            sum[i] += point.weights[k] * value[i];
    }
    return sum;
}

} // namespace

osg::Pnt3f kyPointOnGeometry::getPosition() const
{
    return geometry ? blend<osg::Pnt3f>(*this, geometry->getPositions()) : osg::Pnt3f();
}

osg::Vec2f kyPointOnGeometry::getUV(unsigned int slot) const
{
    return geometry ? blend<osg::Vec2f>(*this, geometry->getTexSlot(slot)) : osg::Vec2f();
}

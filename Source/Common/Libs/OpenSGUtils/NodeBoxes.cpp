#include "OpenSGUtils/kyNodeUtils.h"

#include "OpenSG/CoreAs.h"
#include "OpenSGUtils/PointBox.h"

namespace kyNodeUtils
{

namespace
{

osg::GeoPositions3fPtr positionsOf(const kyNodePtr& node)
{
    const auto geometry = osg::coreAs<osg::Geometry>(node.get());
    return geometry ? osg::dcast<osg::GeoPositions3f>(geometry->getPositions())
                    : osg::GeoPositions3fPtr();
}

/// matrix  from the coordinates that `inWorld` says to those of the box
PointBox boxOf(const std::vector<kyNodePtr>& nodes, const osg::Matrix& matrix, bool inWorld)
{
    PointBox box;
    for (const kyNodePtr& node : nodes) {
        const osg::GeoPositions3fPtr positions = positionsOf(node);
        if (!positions)
            continue;
        const osg::Matrix toBox = inWorld ? matrix * node->getToWorld() : matrix;
        for (const osg::Pnt3f& position : positions->values())
            box.widen(toBox.transformPoint(position));
    }
    return box;
}

/// In double, where the distance of two floats can't overflow.
float middle(float low, float high)
{
    return static_cast<float>((static_cast<double>(low) + static_cast<double>(high)) / 2);
}

} // namespace

void getBoundingBox(const std::vector<kyNodePtr>& nodes, osg::Pnt3f& min, osg::Pnt3f& max,
                    osg::Vec3f& center)
{
    const PointBox box = boxOf(nodes, osg::Matrix(), true);
    min = box.isEmpty() ? osg::Pnt3f() : box.min();
    max = box.isEmpty() ? osg::Pnt3f() : box.max();
    for (unsigned int i = 0; i < 3; ++i)
        center[i] = middle(min[i], max[i]);
}

osg::Vec3f getProjectionBoundingBox(const std::vector<kyNodePtr>& nodes, const osg::Matrix& matrix,
                                    osg::Pnt3f& min, osg::Pnt3f& max, bool inWorld)
{
    const PointBox box = boxOf(nodes, matrix, inWorld);
    if (box.isEmpty())
        return osg::Vec3f();
    min = box.min();
    max = box.max();
    return max - min;
}

} // namespace kyNodeUtils

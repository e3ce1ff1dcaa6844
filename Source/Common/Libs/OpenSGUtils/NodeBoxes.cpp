#include "OpenSGUtils/kyNodeUtils.h"

#include "OpenSG/CoreAs.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kyNodeUtils
{

namespace
{

class Box
{
public:
    bool isEmpty() const { return min_.x() > max_.x(); }
    const osg::Pnt3f& min() const { return min_; }
    const osg::Pnt3f& max() const { return max_; }

    void widen(const osg::Pnt3f& point)
    {
        if (!std::isfinite(point.x()) || !std::isfinite(point.y()) || !std::isfinite(point.z()))
            return;
        for (unsigned int i = 0; i < 3; ++i) {
            min_[i] = std::min(min_[i], point[i]);
            max_[i] = std::max(max_[i], point[i]);
        }
    }

private:
    static constexpr float Largest = std::numeric_limits<float>::max();

    osg::Pnt3f min_{Largest, Largest, Largest};
    osg::Pnt3f max_{-Largest, -Largest, -Largest};
};

osg::GeoPositions3fPtr positionsOf(const kyNodePtr& node)
{
    const auto geometry = osg::coreAs<osg::Geometry>(node.get());
    return geometry ? osg::dcast<osg::GeoPositions3f>(geometry->getPositions())
                    : osg::GeoPositions3fPtr();
}

/// matrix  from the coordinates that `inWorld` says to those of the box
Box boxOf(const std::vector<kyNodePtr>& nodes, const osg::Matrix& matrix, bool inWorld)
{
    Box box;
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
    const Box box = boxOf(nodes, osg::Matrix(), true);
    min = box.isEmpty() ? osg::Pnt3f() : box.min();
    max = box.isEmpty() ? osg::Pnt3f() : box.max();
    for (unsigned int i = 0; i < 3; ++i)
        center[i] = middle(min[i], max[i]);
}

osg::Vec3f getProjectionBoundingBox(const std::vector<kyNodePtr>& nodes, const osg::Matrix& matrix,
                                    osg::Pnt3f& min, osg::Pnt3f& max, bool inWorld)
{
    const Box box = boxOf(nodes, matrix, inWorld);
    if (box.isEmpty())
        return osg::Vec3f();
    min = box.min();
    max = box.max();
    return max - min;
}

} // namespace kyNodeUtils

// The measures that kyUVTextureProjection takes of nodes.

#include "OpenSGUtils/kyNodePtr.h"
#include "OpenSGUtils/kyNodeUtils.h"
#include "UVUtils/projection/TexCoordsToFill.h"
#include "UVUtils/projection/kyUVTextureProjection.h"

#include <algorithm>
#include <cmath>

namespace
{

std::vector<kyNodePtr> wrapped(const std::vector<osg::NodePtr>& nodes)
{
    return {nodes.begin(), nodes.end()};
}

bool isFinite(const osg::Pnt3f& point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y()) && std::isfinite(point.z());
}

/// Empty at the start, for points up to 1e30 from the origin.
struct Box
{
    osg::Pnt3f min{1e30F, 1e30F, 1e30F};
    osg::Pnt3f max{-1e30F, -1e30F, -1e30F};

    void widen(const osg::Pnt3f& point)
    {
        for (unsigned int i = 0; i < 3; ++i) {
            min[i] = std::min(min[i], point[i]);
            max[i] = std::max(max[i], point[i]);
        }
    }
};

struct Extent
{
    Box world;
    Box projection;

    /// Points that are not finite in both spaces are passed over.
    ///
    /// toProjection  leads from the world to the space of the projection
    void widen(const osg::Node& node, const osg::GeoPositions3f& positions,
               const osg::Matrix& toProjection)
    {
        const osg::Matrix toWorld = node.getToWorld();
        for (const osg::Pnt3f& position : positions.values()) {
            const osg::Pnt3f inWorld = toWorld.transformPoint(position);
            const osg::Pnt3f inProjection = toProjection.transformPoint(inWorld);
            if (!isFinite(inWorld) || !isFinite(inProjection))
                continue;
            world.widen(inWorld);
            projection.widen(inProjection);
        }
    }
};

} // namespace

void kyUVTextureProjection::calculateBoundingBox(const std::vector<osg::NodePtr>& nodes,
                                                 osg::Vec3f& center, osg::Pnt3f& min,
                                                 osg::Pnt3f& max)
{
    kyNodeUtils::getBoundingBox(wrapped(resolveNodes(nodes)), min, max, center);
}

void kyUVTextureProjection::calculateProjectionBoundingBox(const std::vector<osg::NodePtr>& nodes,
                                                           const osg::Matrix& matrix,
                                                           osg::Vec2f& size, osg::Pnt3f& center)
{
    const osg::Matrix toProjection = matrix.inverted();
    Extent extent;
    for (const osg::NodePtr& node : resolveNodes(nodes))
        if (const osg::GeoPositions3fPtr positions = positionsToProject(geometryCoreOf(node)))
            extent.widen(*node, *positions, toProjection);
    const auto& [world, projection] = extent;
    size = osg::Vec2f(projection.max.x() - projection.min.x(),
                      projection.max.y() - projection.min.y());
    center = world.min + (world.max - world.min) * 0.5F;
}

void kyUVTextureProjection::calculateProjectionSize(const std::vector<osg::NodePtr>& nodes,
                                                    const osg::Matrix& matrix, osg::Pnt3f& min,
                                                    osg::Pnt3f& max)
{
    const std::vector<osg::NodePtr> resolved = resolveNodes(nodes);
    if (!resolved.empty())
        kyNodeUtils::getProjectionBoundingBox(wrapped(resolved), matrix.inverted(), min, max, true);
}

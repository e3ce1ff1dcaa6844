// The measures that kyUVTextureProjection takes of nodes.

#include "OpenSG/CoreAs.h"
#include "OpenSGUtils/PointBox.h"
#include "OpenSGUtils/kyNodePtr.h"
#include "OpenSGUtils/kyNodeUtils.h"
#include "UVUtils/projection/TexCoordsToFill.h"
#include "UVUtils/projection/kyUVTextureProjection.h"

namespace
{

std::vector<kyNodePtr> wrapped(const std::vector<osg::NodePtr>& nodes)
{
    return {nodes.begin(), nodes.end()};
}

struct Extent
{
    /// Where the sides of empty boxes stand; callers know -2e30 for the size of one.
    static constexpr float Limit = 1e30F;

    PointBox world{Limit};
    PointBox projection{Limit};

    /// toProjection  leads from the world to the space of the projection
    void widen(const osg::Node& node, const osg::GeoPositions3f& positions,
               const osg::Matrix& toProjection)
    {
        const osg::Matrix toWorld = node.getToWorld();
        for (const osg::Pnt3f& position : positions.values()) {
            const osg::Pnt3f inWorld = toWorld.transformPoint(position);
            world.widen(inWorld);
            projection.widen(toProjection.transformPoint(inWorld));
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
        if (const osg::GeoPositions3fPtr positions =
                positionsToProject(osg::coreAs<osg::Geometry>(node)))
            extent.widen(*node, *positions, toProjection);
    const auto& [world, projection] = extent;
    size = osg::Vec2f(projection.max().x() - projection.min().x(),
                      projection.max().y() - projection.min().y());
    center = world.min() + (world.max() - world.min()) * 0.5F;
}

void kyUVTextureProjection::calculateProjectionSize(const std::vector<osg::NodePtr>& nodes,
                                                    const osg::Matrix& matrix, osg::Pnt3f& min,
                                                    osg::Pnt3f& max)
{
    const std::vector<osg::NodePtr> resolved = resolveNodes(nodes);
    if (!resolved.empty())
        kyNodeUtils::getProjectionBoundingBox(wrapped(resolved), matrix.inverted(), min, max, true);
}

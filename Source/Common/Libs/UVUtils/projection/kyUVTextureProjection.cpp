#include "UVUtils/projection/kyUVTextureProjection.h"

#include "OpenSG/CoreAs.h"
#include "OpenSGUtils/kyNodeUtils.h"
#include "UVUtils/model/kyUVUtils.h"

#include <set>

kyUVPlanarProjectionSupportGeometry* kyUVTextureProjection::s_planarProjectionSupportGeometry =
    nullptr;
kyUVTriPlanarProjectionSupportGeometry*
    kyUVTextureProjection::s_triPlanarProjectionSupportGeometry = nullptr;
kyUVCylindricalProjectionSupportGeometry*
    kyUVTextureProjection::s_cylindricalProjectionSupportGeometry = nullptr;

void kyUVTextureProjection::init(kyUVPlanarProjectionSupportGeometry* planar,
                                 kyUVTriPlanarProjectionSupportGeometry* triPlanar,
                                 kyUVCylindricalProjectionSupportGeometry* cylindrical)
{
    s_planarProjectionSupportGeometry = planar;
    s_triPlanarProjectionSupportGeometry = triPlanar;
    s_cylindricalProjectionSupportGeometry = cylindrical;
}

kyUVPlanarProjectionSupportGeometry* kyUVTextureProjection::getPlanarSupportGeometry()
{
    return s_planarProjectionSupportGeometry;
}

kyUVTriPlanarProjectionSupportGeometry* kyUVTextureProjection::getTriPlanarSupportGeometry()
{
    return s_triPlanarProjectionSupportGeometry;
}

kyUVCylindricalProjectionSupportGeometry* kyUVTextureProjection::getCylindricalSupportGeometry()
{
    return s_cylindricalProjectionSupportGeometry;
}

std::vector<osg::NodePtr>
kyUVTextureProjection::resolveNodes(const std::vector<osg::NodePtr>& nodes)
{
    std::set<osg::NodePtr> resolved;
    for (const osg::NodePtr& node : nodes) {
        const osg::GeometryPtr geometry = osg::coreAs<osg::Geometry>(node);
        if (kyNodeUtils::isShellGeometry(geometry)) {
            std::vector<osg::NodePtr> below;
            kyNodeUtils::getSubTreeNodes(node, below);
            resolved.insert(below.begin(), below.end());
        } else if (geometry) {
            resolved.insert(node);
        }
    }
    return {resolved.begin(), resolved.end()};
}

void kyUVTextureProjection::applyUVChanges(const osg::GeometryPtr& geometry, kyUVTypes::UVSet uvSet,
                                           const osg::GeoTexCoordsPtr& texCoords)
{
    kyUVUtils::setTexSlot(geometry, uvSet, texCoords);
}

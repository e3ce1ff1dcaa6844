#include "UVUtils/projection/kyUVCylindricalProjection.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/CoreAs.h"
#include "OpenSG/Transform3D.h"
#include "OpenSGUtils/kyNodeUtils.h"
#include "UVUtils/model/DegreesRadians.h"
#include "UVUtils/projection/CylinderTransforms.h"
#include "UVUtils/projection/CylinderUVs.h"
#include "UVUtils/projection/PartedTriangles.h"
#include "UVUtils/projection/ProjectionSubjects.h"
#include "UVUtils/projection/TexCoordsToFill.h"
#include "UVUtils/projection/kyUVCylindricalProjectionSupportGeometry.h"

namespace
{

struct CylinderTransformNodes
{
    osg::NodePtr body;  ///< places and scales the cylinder in the world
    osg::NodePtr image; ///< turns the image about its middle
};

/// Null ones without a support geometry.
CylinderTransformNodes findNodes(kyUVCylindricalProjectionSupportGeometry* support)
{
    if (!support)
        return {};
    return {support->getCylindricTransform3D(), support->getCylindricTransform2D()};
}

/// Writes the UVs of the corners; old values beyond three a triangle stay.
void wrapImage(const osg::GeoPositions3f& positions, const std::vector<unsigned>& corners,
               const CylinderImage& image, osg::GeoTexCoords2f& texCoords)
{
    if (texCoords.getSize() < corners.size())
        texCoords.resize(static_cast<unsigned>(corners.size()));
    wrapAroundCylinder(positions.values(), corners, image, texCoords.values());
}

} // namespace

void kyUVCylindricalProjection::apply(const std::vector<osg::NodePtr>& nodes,
                                      kyUVTypes::UVSet uvSet,
                                      const kyUVCylindricalProjectionSettings& settings)
{
    const std::vector<osg::NodePtr> subjects = projectableNodes(nodes);
    if (subjects.empty())
        return;
    kyUVCylindricalProjectionSupportGeometry* const support = getCylindricalSupportGeometry();
    const CylinderTransformNodes transforms = findNodes(support);
    if (!hasTransformNodes(transforms.body, transforms.image))
        return;
    CylinderTransforms::placeImage(transforms.image, settings.getCylindricRotation2D());
    CylinderTransforms::placeBody(transforms.body, settings);
    support->setProjectionUAngle(settings.getProjectionUAngle());

    const auto body = osg::dcast<osg::Transform3D>(transforms.body->getCore());
    const auto image = osg::dcast<osg::Transform3D>(transforms.image->getCore());
    if (!body || !image)
        return;
    for (const osg::NodePtr& node : subjects) {
        writeSettings(node, uvSet, settings);
        apply(node, uvSet, body->getMatrix(), image->getMatrix(),
              static_cast<float>(settings.getProjectionUAngle()));
    }
}

void kyUVCylindricalProjection::apply(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                      const osg::Matrix& matrix3D, const osg::Matrix& matrix2D,
                                      float angle)
{
    const osg::Matrix toCylinder = matrix3D.inverted();
    for (const osg::NodePtr& resolved : resolveNodes({node})) {
        const osg::GeometryPtr geometry = osg::coreAs<osg::Geometry>(resolved);
        if (kyNodeUtils::isShellGeometry(geometry) || !positionsToProject(geometry))
            continue;
        const std::vector<unsigned> corners = partTriangles(geometry).corners;
        const osg::GeoPositions3fPtr positions = positionsToProject(geometry);
        osg::RefPtr<osg::GeoTexCoords2f> texCoords = texCoordsToFill(*geometry, uvSet);
        wrapImage(*positions, corners,
                  {toCylinder * resolved->getToWorld(), matrix2D, radiansFromDegrees(angle)},
                  *texCoords);
        osg::notifyChanged(texCoords, osg::FieldMask::all());
        applyUVChanges(geometry, uvSet, texCoords.get());
        texCoords = osg::RefPtr<osg::GeoTexCoords2f>(); // so that what follows need not copy it
        joinEqualCorners(geometry);
    }
}

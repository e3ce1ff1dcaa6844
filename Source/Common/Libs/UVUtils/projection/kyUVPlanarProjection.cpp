#include "UVUtils/projection/kyUVPlanarProjection.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/CoreAs.h"
#include "UVUtils/projection/PlaneOrientation.h"
#include "UVUtils/projection/PlaneUVs.h"
#include "UVUtils/projection/ProjectionSubjects.h"
#include "UVUtils/projection/TexCoordsToFill.h"
#include "UVUtils/projection/kyUVPlanarProjectionSupportGeometry.h"

namespace
{

/// Half the size of an image whose size is not known.
constexpr float UnknownHalfSize = 500.0F;

struct PlaneTransformNodes
{
    osg::NodePtr projection;
    osg::NodePtr texture;
};

struct PlaneTransforms
{
    osg::Transform3DPtr projection;
    osg::Transform3DPtr texture;

    explicit operator bool() const { return projection && texture; }
};

/// Null ones without a support geometry.
PlaneTransformNodes findNodes(kyUVPlanarProjectionSupportGeometry* support)
{
    if (!support)
        return {};
    return {support->getProjectionTransformNode(), support->getPlanarTransformNode()};
}

PlaneTransforms transformsOf(const PlaneTransformNodes& nodes)
{
    return {osg::coreAs<osg::Transform3D>(nodes.projection),
            osg::coreAs<osg::Transform3D>(nodes.texture)};
}

/// The same, and a word to the log where a node is missing.
PlaneTransforms demandTransforms(kyUVPlanarProjectionSupportGeometry* support)
{
    const PlaneTransformNodes nodes = findNodes(support);
    return hasTransformNodes(nodes.projection, nodes.texture) ? transformsOf(nodes)
                                                              : PlaneTransforms();
}

osg::Vec2f halfSizeOf(const kyUVPlanarProjectionSettings& settings)
{
    osg::Vec2f half(UnknownHalfSize, UnknownHalfSize);
    if (settings.getTextureWidth() > 0.0F && settings.getTextureHeight() > 0.0F)
        half = osg::Vec2f(settings.getTextureWidth() * 0.5F, settings.getTextureHeight() * 0.5F);
    const osg::Vec2f scale = settings.getTextureScale();
    return osg::Vec2f(half.x() * scale.x(), half.y() * scale.y());
}

/// The fields in which a plane's transforms are written, in one notice.
void notifyTransformChanged(const osg::Transform3DPtr& transform)
{
    osg::notifyChanged(
        transform, osg::Transform3D::TranslationFieldMask | osg::Transform3D::RotationFieldMask |
                       osg::Transform3D::ScaleFieldMask | osg::Transform3D::RotatePivotFieldMask);
}

/// Puts the plane into the world. The distance moves it along its normal: the translation takes it
/// up along z, and the pivot, which lies as far below, brings its centre back.
void placePlane(osg::Transform3D& transform, const osg::Vec3f& center,
                const osg::Quaternion& rotation, float distance)
{
    transform.setTranslation(center);
    transform.setRotationAsQuaternion(rotation);
    transform.setScale(osg::Vec3f(1, 1, 1));
    transform.setRotatePivot(osg::Pnt3f(0.0F, 0.0F, -distance));
}

/// Puts the image, which covers -1 to 1, onto the plane.
void placeImage(osg::Transform3D& transform, const osg::Vec2f& offset,
                const osg::Quaternion& rotation, const osg::Vec2f& halfSize)
{
    transform.setTranslation(osg::Vec3f(-offset.x(), -offset.y(), -0.0F));
    transform.setRotationAsQuaternion(rotation);
    transform.setScale(osg::Vec3f(halfSize.x(), halfSize.y(), 1.0F));
    transform.setRotatePivot(osg::Pnt3f(0, 0, 0));
}

} // namespace

void kyUVPlanarProjection::calculateProjection(const kyUVPlanarProjectionSettings& settings,
                                               const osg::Transform3DPtr& projectionTransform,
                                               const osg::Transform3DPtr& textureTransform)
{
    if (!projectionTransform || !textureTransform)
        return;
    const kyUVPlanarProjectionSupportGeometry* const support = getPlanarSupportGeometry();
    const float distance = support ? support->getPlaneDistance() : 0.0F;
    placePlane(*projectionTransform, getLocalProjectionPlaneCenter(settings, distance),
               get3DRotation(settings), distance);
    notifyTransformChanged(projectionTransform);
    placeImage(*textureTransform, settings.getTextureOffset(), get2DRotation(settings),
               halfSizeOf(settings));
    notifyTransformChanged(textureTransform);
}

void kyUVPlanarProjection::updateManipulator(const kyUVPlanarProjectionSettings& settings)
{
    if (const PlaneTransforms transforms = transformsOf(findNodes(getPlanarSupportGeometry())))
        calculateProjection(settings, transforms.projection, transforms.texture);
}

void kyUVPlanarProjection::apply(const std::vector<osg::NodePtr>& nodes, kyUVTypes::UVSet uvSet,
                                 const kyUVPlanarProjectionSettings& settings)
{
    const std::vector<osg::NodePtr> subjects = projectableNodes(nodes);
    if (subjects.empty())
        return;
    const PlaneTransforms transforms = demandTransforms(getPlanarSupportGeometry());
    if (!transforms)
        return;
    calculateProjection(settings, transforms.projection, transforms.texture);
    for (const osg::NodePtr& node : subjects) {
        writeSettings(node, uvSet, settings);
        apply(node, uvSet, transforms.projection->getMatrix(), transforms.texture->getMatrix());
    }
}

void kyUVPlanarProjection::apply(const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                 const osg::Matrix& projectionMatrix,
                                 const osg::Matrix& textureMatrix)
{
    const osg::Matrix toPlane = (projectionMatrix * textureMatrix).inverted();
    for (const osg::NodePtr& resolved : resolveNodes({node})) {
        const osg::GeometryPtr geometry = osg::coreAs<osg::Geometry>(resolved);
        const osg::GeoPositions3fPtr positions = positionsToProject(geometry);
        if (!positions)
            continue;
        const osg::RefPtr<osg::GeoTexCoords2f> texCoords = texCoordsToFill(*geometry, uvSet);
        texCoords->resize(positions->getSize()); // every old value is written over
        projectOntoPlane(positions->values(), toPlane * resolved->getToWorld(),
                         texCoords->values());
        osg::notifyChanged(texCoords, osg::FieldMask::all());
        applyUVChanges(geometry, uvSet, texCoords.get());
    }
}

kyUVPlanarProjectionSettings
kyUVPlanarProjection::getDefaultSettings(const std::vector<osg::NodePtr>& nodes,
                                         unsigned int imageWidth, unsigned int imageHeight)
{
    // As made: no offset, rotation or scale, and the centre at the origin.
    kyUVPlanarProjectionSettings settings;
    if (nodes.empty())
        return settings;
    const PlaneTransforms transforms = demandTransforms(getPlanarSupportGeometry());
    if (!transforms)
        return settings;

    osg::Vec3f boxCenter;
    osg::Pnt3f min;
    osg::Pnt3f max;
    calculateBoundingBox(nodes, boxCenter, min, max);
    initializeOrientation(settings, min, max);
    calculateProjection(settings, transforms.projection, transforms.texture);

    osg::Vec2f size;
    osg::Pnt3f center;
    calculateProjectionBoundingBox(nodes, transforms.projection->getMatrix(), size, center);
    const bool hasImage = imageWidth != 0 && imageHeight != 0;
    if (hasImage)
        adjustSizeToAspectRatio(size,
                                static_cast<float>(imageWidth) / static_cast<float>(imageHeight));
    settings.setKeepAspectRatio(hasImage);
    settings.setTextureWidth(size.x());
    settings.setTextureHeight(size.y());
    settings.setProjectionCenter(center.subZero());
    calculateProjection(settings, transforms.projection, transforms.texture);
    return settings;
}

void kyUVPlanarProjection::adjustSizeToAspectRatio(osg::Vec2f& size, float aspect)
{
    if (aspect >= 1.0F)
        size[1] = size.x() / aspect;
    else if (aspect > 0.0F)
        size[0] = aspect * size.y();
}

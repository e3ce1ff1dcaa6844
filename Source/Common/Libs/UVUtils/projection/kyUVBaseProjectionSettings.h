#pragma once

#include "UVUtils/projection/LeastMagnitude.h"

/// What the planar and the cylindrical projection have in common. Lengths are in scene units,
/// angles in degrees.
class kyUVBaseProjectionSettings
{
public:
    /// Does the size follow the image's aspect ratio?
    bool getKeepAspectRatio() const { return keepAspectRatio_; }
    void setKeepAspectRatio(bool value) { keepAspectRatio_ = value; }

    /// Width over height of the image.
    double getAspectRatio() const { return aspectRatio_; }
    void setAspectRatio(double value) { aspectRatio_ = value; }

    /// Full size of the projected image.
    float getTextureWidth() const { return textureWidth_; }
    void setTextureWidth(float value) { textureWidth_ = value; }
    float getTextureHeight() const { return textureHeight_; }
    void setTextureHeight(float value) { textureHeight_ = value; }

    /// Shift in the image plane.
    osg::Vec2f getTextureOffset() const { return textureOffset_; }
    void setTextureOffset(const osg::Vec2f& value) { textureOffset_ = value; }

    /// Factors on the half size of a plane.
    osg::Vec2f getTextureScale() const { return textureScale_; }
    void setTextureScale(const osg::Vec2f& value) { textureScale_ = value; }

    /// Of a plane phi, theta and rho; of a cylinder the rotations about x, y and z.
    osg::Vec3f getProjectionRotation() const { return projectionRotation_; }
    void setProjectionRotation(const osg::Vec3f& value) { projectionRotation_ = value; }

    /// Scale of the projection body; each magnitude at least LeastFactor.
    osg::Vec3f getProjectionScale() const { return projectionScale_; }
    void setProjectionScale(const osg::Vec3f& value)
    {
        projectionScale_ = withLeastMagnitude(value, LeastFactor);
    }

    /// In world coordinates.
    osg::Vec3f getProjectionCenter() const { return projectionCenter_; }
    void setProjectionCenter(const osg::Vec3f& value) { projectionCenter_ = value; }

private:
    bool keepAspectRatio_ = true;
    double aspectRatio_ = 1.0;
    float textureWidth_ = 500.0F;
    float textureHeight_ = 500.0F;
    osg::Vec2f textureOffset_{0.0F, 0.0F};
    osg::Vec2f textureScale_{1.0F, 1.0F};
    osg::Vec3f projectionRotation_{0.0F, 0.0F, 0.0F};
    osg::Vec3f projectionScale_{1.0F, 1.0F, 1.0F};
    osg::Vec3f projectionCenter_{0.0F, 0.0F, 0.0F};
};

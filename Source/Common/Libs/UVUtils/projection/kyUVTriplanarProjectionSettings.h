#pragma once

#include "UVUtils/projection/LeastMagnitude.h"

#include <cstdint>

/// The parameters of a projection from the six sides of a box; see kyUVTriplanarProjection for the
/// ways in which images move and turn. Lengths are in scene units, angles in degrees. Where a
/// vector holds image parameters, each component is for the two sides of the box that face along
/// that axis.
class kyUVTriplanarProjectionSettings
{
public:
    /// How a triangle gets the side that it is projected from.
    enum Mode : std::int32_t
    {
        DominantAxis = 0,  ///< the one that it faces most
        PropagatedAxis = 1 ///< where it faces several, one that its neighbours have
    };

    /// Full size of the image.
    float getWidth() const { return width_; }
    void setWidth(float value) { width_ = value; }
    float getHeight() const { return height_; }
    void setHeight(float value) { height_ = value; }

    /// Rotation of the box about x, y and z.
    osg::Vec3f getRotation3D() const { return rotation3D_; }
    void setRotation3D(const osg::Vec3f& value) { rotation3D_ = value; }

    /// Rotation of the image on its side.
    osg::Vec3f getRotation2D() const { return rotation2D_; }
    void setRotation2D(const osg::Vec3f& value) { rotation2D_ = value; }

    /// Centre of the box, in world coordinates.
    osg::Vec3f getCenter() const { return center_; }
    void setCenter(const osg::Vec3f& value) { center_ = value; }

    /// Shift of the image.
    osg::Vec3f getOffsetU() const { return offsetU_; }
    void setOffsetU(const osg::Vec3f& value) { offsetU_ = value; }
    osg::Vec3f getOffsetV() const { return offsetV_; }
    void setOffsetV(const osg::Vec3f& value) { offsetV_ = value; }

    /// Repetitions of the image within its size; each magnitude at least LeastFactor.
    osg::Vec3f getRepeatU() const { return repeatU_; }
    void setRepeatU(const osg::Vec3f& value) { repeatU_ = withLeastMagnitude(value, LeastFactor); }
    osg::Vec3f getRepeatV() const { return repeatV_; }
    void setRepeatV(const osg::Vec3f& value) { repeatV_ = withLeastMagnitude(value, LeastFactor); }

    /// Any number is kept; one that is no mode works as DominantAxis.
    Mode getMode() const { return mode_; }
    void setMode(Mode value) { mode_ = value; }

private:
    float width_ = 100.0F;
    float height_ = 100.0F;
    osg::Vec3f rotation3D_{0.0F, 0.0F, 0.0F};
    osg::Vec3f rotation2D_{0.0F, 0.0F, 0.0F};
    osg::Vec3f center_{0.0F, 0.0F, 0.0F};
    osg::Vec3f offsetU_{0.0F, 0.0F, 0.0F};
    osg::Vec3f offsetV_{0.0F, 0.0F, 0.0F};
    osg::Vec3f repeatU_{1.0F, 1.0F, 1.0F};
    osg::Vec3f repeatV_{1.0F, 1.0F, 1.0F};
    Mode mode_ = DominantAxis;
};

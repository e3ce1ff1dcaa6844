#pragma once

#include "UVUtils/projection/kyUVBaseProjectionSettings.h"

/// The parameters of a cylindrical projection. Angles are in degrees.
class kyUVCylindricalProjectionSettings : public kyUVBaseProjectionSettings
{
public:
    /// How far around the cylinder the image goes; its magnitude is at least LeastFactor.
    double getProjectionUAngle() const { return projectionUAngle_; }
    void setProjectionUAngle(double value)
    {
        projectionUAngle_ = withLeastMagnitude(value, static_cast<double>(LeastFactor));
    }

    /// Rotation of the image on the cylinder's surface.
    double getCylindricRotation2D() const { return cylindricRotation2D_; }
    void setCylindricRotation2D(double value) { cylindricRotation2D_ = value; }

private:
    double projectionUAngle_ = 180.0;
    double cylindricRotation2D_ = 0.0;
};

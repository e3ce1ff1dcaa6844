#pragma once

#include <algorithm>

namespace kyUnfold3D
{

/// What a caller may set on the relaxing of present UVs.
class OptimizeSettings
{
public:
    /// How long the solver works on the layout; a negative value becomes 0.
    int getIterations() const { return iterations_; }
    void setIterations(int value) { iterations_ = std::max(value, 0); }

    /// The least distance that borders of an island keep from each other, as a share of the side of
    /// a square of its area; not below 0.
    double getRoomSpace() const { return roomSpace_; }
    void setRoomSpace(double value) { roomSpace_ = std::max(0.0, value); }

    /// Keep the border of an island from crossing itself.
    bool getPreventBorderIntersections() const { return preventBorderIntersections_; }
    void setPreventBorderIntersections(bool value) { preventBorderIntersections_ = value; }

    /// Keep each triangle from turning over.
    bool getPreventTriangleFlips() const { return preventTriangleFlips_; }
    void setPreventTriangleFlips(bool value) { preventTriangleFlips_ = value; }

    /// How much of the relaxation is applied, 0 (nothing) to 1.
    float getPower() const { return power_; }
    void setPower(float value) { power_ = unitInterval(value); }

    /// What the layout keeps: angles at one end, distances at the other, 0 to 1.
    float getAngleVsDistanceConservation() const { return angleVsDistance_; }
    void setAngleVsDistanceConservation(float value) { angleVsDistance_ = unitInterval(value); }

private:
    // In this order of arguments a NaN becomes 0.
    static float unitInterval(float value) { return std::min(1.0F, std::max(0.0F, value)); }

    int iterations_ = 1;
    double roomSpace_ = 0.0;
    bool preventBorderIntersections_ = true;
    bool preventTriangleFlips_ = true;
    float power_ = 1.0F;
    float angleVsDistance_ = 1.0F;
};

} // namespace kyUnfold3D

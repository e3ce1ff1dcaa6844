#pragma once

#include <algorithm>

namespace kyUnfold3D
{

/// What a caller may set on `kyUnfold3D::unfold`.
class UnfoldSettings
{
public:
    /// How long the solver works on the layout; any negative value is kept as -1. Docs/Engine.md
    /// says what the numbers mean.
    int getOptimizeIterations() const { return optimizeIterations_; }
    void setOptimizeIterations(int value) { optimizeIterations_ = std::max(value, -1); }

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

private:
    int optimizeIterations_ = 1;
    double roomSpace_ = 0.0;
    bool preventBorderIntersections_ = true;
    bool preventTriangleFlips_ = true;
};

} // namespace kyUnfold3D

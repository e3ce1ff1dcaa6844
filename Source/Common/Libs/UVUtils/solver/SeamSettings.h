#pragma once

#include "UVUtils/model/kyUVTypes.h"

#include <algorithm>

namespace kyUnfold3D
{

/// What a caller may set on the search for seams. Each mode has fields of its own.
class SeamSettings
{
public:
    kyUVTypes::SeamMode getMode() const { return mode_; }
    void setMode(kyUVTypes::SeamMode value) { mode_ = value; }

    /// Organic: open tube-like parts along their length.
    bool getOrganicUsePipesCutter() const { return organicUsePipesCutter_; }
    void setOrganicUsePipesCutter(bool value) { organicUsePipesCutter_ = value; }

    /// Organic: how finely the mesh is divided, 0 to 1.
    double getOrganicSegAmount() const { return organicSegAmount_; }
    void setOrganicSegAmount(double value) { organicSegAmount_ = unitInterval(value); }

    /// Manufactured: the angle between two triangles, in degrees, from which an edge is a seam.
    double getManufacturedAngle() const { return manufacturedAngle_; }
    void setManufacturedAngle(double value) { manufacturedAngle_ = value; }

    /// Manufactured: the smallest patch that stays one, as a share of the whole area, 0 to 1.
    double getManufacturedAreaRatio() const { return manufacturedAreaRatio_; }
    void setManufacturedAreaRatio(double value) { manufacturedAreaRatio_ = unitInterval(value); }

    /// Baking: the angle between two triangles, in degrees, from which an edge is a seam.
    double getBakingAngle() const { return bakingAngle_; }
    void setBakingAngle(double value) { bakingAngle_ = value; }

    /// Baking: the smallest patch that stays one, in polygons.
    int getBakingSizeOfMinPatch() const { return bakingSizeOfMinPatch_; }
    void setBakingSizeOfMinPatch(int value) { bakingSizeOfMinPatch_ = value; }

private:
    // In this order of arguments a NaN becomes 0.
    static double unitInterval(double value) { return std::min(1.0, std::max(0.0, value)); }

    kyUVTypes::SeamMode mode_ = kyUVTypes::Organic;
    bool organicUsePipesCutter_ = false;
    double organicSegAmount_ = 0.0;
    double manufacturedAngle_ = 89.0;
    double manufacturedAreaRatio_ = 0.0;
    double bakingAngle_ = 89.0;
    int bakingSizeOfMinPatch_ = 5;
};

} // namespace kyUnfold3D

#pragma once

#include "UVUtils/model/kyUVTypes.h"

#include <algorithm>
#include <string>

namespace kyUnfold3D
{

/// What a caller may set on `kyUnfold3D::pack`, and on the packing at the end of an unfold.
///
/// Lengths are in UV units, angles in degrees. The operations with the ending `U3DVal` give a
/// setting as the solver takes it; for an enum value out of its range they log an error and give
/// the stated fallback. Docs/Engine.md says what the solver makes of each number.
class PackSettings
{
public:
    /// Bounds of the rectangle that is packed into: of the first UV axis, then of the second.
    struct Box
    {
        double minU = 0.0;
        double maxU = 1.0;
        double minV = 0.0;
        double maxV = 1.0;

        friend bool operator==(const Box&, const Box&) = default;
    };

    /// How many layouts are tried; the best is kept.
    int getMutations() const { return mutations_; }
    void setMutations(int value) { mutations_ = value; }

    /// Texels along the box at which outlines are compared.
    int getResolution() const { return resolution_; }
    void setResolution(int value) { resolution_ = value; }

    kyUVTypes::PreRotateMode getPreRotateMode() const { return preRotateMode_; }
    void setPreRotateMode(kyUVTypes::PreRotateMode value) { preRotateMode_ = value; }

    kyUVTypes::PreScaleMode getPreScaleMode() const { return preScaleMode_; }
    void setPreScaleMode(kyUVTypes::PreScaleMode value) { preScaleMode_ = value; }

    /// May islands be moved?
    bool getTranslate() const { return translate_; }
    void setTranslate(bool value) { translate_ = value; }

    /// May islands be turned? If so, from the minimum to the maximum in steps. Nothing orders the
    /// two bounds.
    bool getRotate() const { return rotate_; }
    void setRotate(bool value) { rotate_ = value; }
    double getRotateMin() const { return rotateMin_; }
    void setRotateMin(double value) { rotateMin_ = value; }
    double getRotateMax() const { return rotateMax_; }
    void setRotateMax(double value) { rotateMax_ = value; }
    double getRotateStep() const { return rotateStep_; }
    void setRotateStep(double value) { rotateStep_ = value; }

    /// The gap between islands; not below 0.
    double getIslandPadding() const { return islandPadding_; }
    void setIslandPadding(double value) { islandPadding_ = std::max(0.0, value); }

    /// The gap between islands and the edge of their tile, 0 to 0.495: two margins leave room.
    double getTilePadding() const { return tilePadding_; }
    void setTilePadding(double value) { tilePadding_ = std::min(0.495, std::max(0.0, value)); }

    const Box& getBox() const { return box_; }
    void setBox(const Box& value) { box_ = value; }
    void setBox(double minU, double maxU, double minV, double maxV)
    {
        box_ = {minU, maxU, minV, maxV};
    }

    /// How many tiles lie side by side along each UV axis.
    int getTilesU() const { return tilesU_; }
    void setTilesU(int value) { tilesU_ = value; }
    int getTilesV() const { return tilesV_; }
    void setTilesV(int value) { tilesV_ = value; }

    kyUVTypes::TileAssignMode getTileAssignMode() const { return tileAssignMode_; }
    void setTileAssignMode(kyUVTypes::TileAssignMode value) { tileAssignMode_ = value; }

    kyUVTypes::PostScaleMode getPostScaleMode() const { return postScaleMode_; }
    void setPostScaleMode(kyUVTypes::PostScaleMode value) { postScaleMode_ = value; }

    /// How long the search goes on for better layouts, in seconds, whatever the mutations are; a
    /// first layout there is even if it takes longer. 0: by the mutations.
    double getSeconds() const { return seconds_; }
    void setSeconds(double value) { seconds_ = std::max(0.0, value); }

    double getRotateStepU3DVal() const;           ///< 0 when islands may not be turned
    int getPreRotateModeU3DVal() const;           ///< 0 to 5; fallback 0
    int getPreScaleModeU3DVal() const;            ///< 0, 1 or 3; fallback 0
    int getPostScaleModeU3DVal() const;           ///< 1 to 3; fallback 1
    std::string getTilesAssignModeU3DVal() const; ///< fallback "Distribute"

private:
    int mutations_ = 1;
    int resolution_ = 256;
    kyUVTypes::PreRotateMode preRotateMode_ = kyUVTypes::PreRotate4;
    kyUVTypes::PreScaleMode preScaleMode_ = kyUVTypes::PreScale1;
    bool translate_ = true;
    bool rotate_ = false;
    double rotateMin_ = 0.0;
    double rotateMax_ = 360.0;
    double rotateStep_ = 90.0;
    double islandPadding_ = 0.0;
    double tilePadding_ = 0.0;
    Box box_;
    int tilesU_ = 1;
    int tilesV_ = 1;
    kyUVTypes::TileAssignMode tileAssignMode_ = kyUVTypes::TileDistribute;
    kyUVTypes::PostScaleMode postScaleMode_ = kyUVTypes::PostScale1;
    double seconds_ = 0.0;
};

} // namespace kyUnfold3D

#include "UVUtils/solver/PackSettings.h"

#include "Utils/kyLog.h"

namespace kyUnfold3D
{

double PackSettings::getRotateStepU3DVal() const
{
    return rotate_ ? rotateStep_ : 0.0;
}

int PackSettings::getPreRotateModeU3DVal() const
{
    if (preRotateMode_ >= kyUVTypes::PreRotate0 && preRotateMode_ <= kyUVTypes::PreRotate5)
        return preRotateMode_;
    kyLog::errorNR("PackSettings: PreRotateMode unknown");
    return 0;
}

int PackSettings::getPreScaleModeU3DVal() const
{
    switch (preScaleMode_) {
    case kyUVTypes::PreScale0:
        return 0;
    case kyUVTypes::PreScale1:
        return 1;
    case kyUVTypes::PreScale2:
        return 3; // the solver's 2 is a mode that the library does not offer
    }
    kyLog::errorNR("PackSettings: PreScaleMode unknown");
    return 0;
}

int PackSettings::getPostScaleModeU3DVal() const
{
    if (postScaleMode_ >= kyUVTypes::PostScale0 && postScaleMode_ <= kyUVTypes::PostScale2)
        return postScaleMode_ + 1; // the solver's 0 is a mode that the library does not offer
    kyLog::errorNR("PackSettings: PostScaleMode unknown");
    return 1;
}

std::string PackSettings::getTilesAssignModeU3DVal() const
{
    switch (tileAssignMode_) {
    case kyUVTypes::TileOfBoxCenter:
        return "BBoxCenter";
    case kyUVTypes::TileDistribute:
        return "Distribute";
    }
    kyLog::errorNR("PackSettings: TileAssignMode unknown");
    return "Distribute";
}

} // namespace kyUnfold3D

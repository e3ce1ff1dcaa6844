#include "UVUtils/Captures.h"
#include "UVUtils/solver/OptimizeSettings.h"
#include "UVUtils/solver/PackSettings.h"
#include "UVUtils/solver/SeamSettings.h"
#include "UVUtils/solver/UnfoldSettings.h"

#include <gtest/gtest.h>

#include <limits>

using namespace kyUnfold3D;

namespace
{

const double noNumber = std::numeric_limits<double>::quiet_NaN();

TEST(Settings, IterationsBelowZeroMeanMinusOneToUnfoldAndNoneToOptimize)
{
    UnfoldSettings unfold;
    unfold.setOptimizeIterations(-5);
    EXPECT_EQ(unfold.getOptimizeIterations(), -1);
    OptimizeSettings optimize;
    optimize.setIterations(-5);
    EXPECT_EQ(optimize.getIterations(), 0);
}

TEST(Settings, LengthsAndSharesAreClamped)
{
    UnfoldSettings unfold;
    unfold.setRoomSpace(-0.5);
    EXPECT_EQ(unfold.getRoomSpace(), 0.0);

    PackSettings pack;
    pack.setTilePadding(0.7);
    EXPECT_EQ(pack.getTilePadding(), 0.495);
    pack.setTilePadding(-1.0);
    EXPECT_EQ(pack.getTilePadding(), 0.0);
    pack.setIslandPadding(-1.0);
    EXPECT_EQ(pack.getIslandPadding(), 0.0);

    OptimizeSettings optimize;
    optimize.setPower(2.0F);
    EXPECT_EQ(optimize.getPower(), 1.0F);
    optimize.setAngleVsDistanceConservation(-1.0F);
    EXPECT_EQ(optimize.getAngleVsDistanceConservation(), 0.0F);

    SeamSettings seam;
    seam.setOrganicSegAmount(1.5);
    EXPECT_EQ(seam.getOrganicSegAmount(), 1.0);
    seam.setManufacturedAreaRatio(-0.5);
    EXPECT_EQ(seam.getManufacturedAreaRatio(), 0.0);
}

TEST(Settings, AClampedFieldNeverHoldsNoNumber)
{
    PackSettings pack;
    pack.setTilePadding(noNumber);
    pack.setIslandPadding(noNumber);
    EXPECT_EQ(pack.getTilePadding(), 0.0);
    EXPECT_EQ(pack.getIslandPadding(), 0.0);
    OptimizeSettings optimize;
    optimize.setPower(static_cast<float>(noNumber));
    optimize.setRoomSpace(noNumber);
    EXPECT_EQ(optimize.getPower(), 0.0F);
    EXPECT_EQ(optimize.getRoomSpace(), 0.0);
}

TEST(Settings, PackModesBecomeTheSolversNumbers)
{
    LogCapture log;
    PackSettings pack;
    const int preScale[] = {0, 1, 3};
    for (int i = 0; i < 3; ++i) {
        pack.setPreScaleMode(kyUVTypes::PreScaleMode(i));
        pack.setPostScaleMode(kyUVTypes::PostScaleMode(i));
        EXPECT_EQ(pack.getPreScaleModeU3DVal(), preScale[i]);
        EXPECT_EQ(pack.getPostScaleModeU3DVal(), i + 1);
    }
    for (int i = 0; i < 6; ++i) {
        pack.setPreRotateMode(kyUVTypes::PreRotateMode(i));
        EXPECT_EQ(pack.getPreRotateModeU3DVal(), i);
    }
    EXPECT_TRUE(log.lines.empty());
}

TEST(Settings, AnUnknownPackModeIsLoggedAndFallsBack)
{
    for (const int unknown : {-1, 6, 1000}) {
        LogCapture log;
        PackSettings pack;
        pack.setPreRotateMode(kyUVTypes::PreRotateMode(unknown));
        pack.setPreScaleMode(kyUVTypes::PreScaleMode(unknown));
        pack.setPostScaleMode(kyUVTypes::PostScaleMode(unknown));
        pack.setTileAssignMode(kyUVTypes::TileAssignMode(unknown));
        EXPECT_EQ(pack.getPreRotateModeU3DVal(), 0);
        EXPECT_EQ(pack.getPreScaleModeU3DVal(), 0);
        EXPECT_EQ(pack.getPostScaleModeU3DVal(), 1);
        EXPECT_EQ(pack.getTilesAssignModeU3DVal(), "Distribute");
        EXPECT_EQ(log.lines,
                  (std::vector<std::string>{"errorNR: PackSettings: PreRotateMode unknown",
                                            "errorNR: PackSettings: PreScaleMode unknown",
                                            "errorNR: PackSettings: PostScaleMode unknown",
                                            "errorNR: PackSettings: TileAssignMode unknown"}));
    }
}

TEST(Settings, WithoutRotationTheSolverGetsNoStep)
{
    PackSettings pack;
    pack.setRotateStep(45.0);
    EXPECT_EQ(pack.getRotateStepU3DVal(), 0.0);
    pack.setRotate(true);
    EXPECT_EQ(pack.getRotateStepU3DVal(), 45.0);
}

} // namespace

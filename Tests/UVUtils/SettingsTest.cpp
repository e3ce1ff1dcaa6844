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

TEST(Settings, LengthsAndSharesAreClampedAndNeverNoNumber)
{
    struct Case
    {
        double given, length, share, tilePadding;
    };
    const double noNumber = std::numeric_limits<double>::quiet_NaN();
    for (const Case& c : {Case{-1, 0, 0, 0}, Case{0.25, 0.25, 0.25, 0.25}, Case{7, 7, 1, 0.495},
                          Case{noNumber, 0, 0, 0}})
    {
        SCOPED_TRACE(c.given);
        UnfoldSettings unfold;
        unfold.setRoomSpace(c.given);
        EXPECT_EQ(unfold.getRoomSpace(), c.length);
        OptimizeSettings optimize;
        optimize.setRoomSpace(c.given);
        EXPECT_EQ(optimize.getRoomSpace(), c.length);
        optimize.setIterations(-5);
        EXPECT_EQ(optimize.getIterations(), 0);
        optimize.setPower(static_cast<float>(c.given));
        EXPECT_EQ(optimize.getPower(), c.share);
        optimize.setAngleVsDistanceConservation(static_cast<float>(c.given));
        EXPECT_EQ(optimize.getAngleVsDistanceConservation(), c.share);
        PackSettings pack;
        pack.setIslandPadding(c.given);
        EXPECT_EQ(pack.getIslandPadding(), c.length);
        pack.setTilePadding(c.given);
        EXPECT_EQ(pack.getTilePadding(), c.tilePadding);
        SeamSettings seam;
        seam.setOrganicSegAmount(c.given);
        EXPECT_EQ(seam.getOrganicSegAmount(), c.share);
        seam.setManufacturedAreaRatio(c.given);
        EXPECT_EQ(seam.getManufacturedAreaRatio(), c.share);
    }
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

} // namespace

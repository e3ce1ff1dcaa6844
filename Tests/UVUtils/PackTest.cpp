#include "UVUtils/SolverFixture.h"

using namespace kyUnfold3D;

namespace
{

class Pack : public SolverFixture
{
protected:
    Pack() { mesh = osg::RefPtr<osg::Geometry>(quadsApart(3)); }
};

const Texts startSettings{
    "#Translate bool = bool true",
    "#Rotate.Min double 0.0 = double 0",
    "#Rotate.Max double 360.0 = double 360",
    "#Rotate.Step double 0.0 = double 0",
    "#Rotate.Mode int 2 = int 4",
    "#Scaling.Mode int 0 = int 1",
    "#LayoutScalingMode int 0 = int 2",
    "#Resolution int = int 256",
    "#MaxMutations int 1 = int 1",
    "#SpacingSize double 0 = double 0",
    "#MarginSize double 0 = double 0",
    "#Box box2d 0.0 1.0 0.0 1.0 = box 0 1 0 1",
    "#MultiTile.SizeU int = int 1",
    "#MultiTile.SizeV int = int 1",
    R"(#TileAssignMode string "Specified" = string Distribute)",
};

TEST_F(Pack, SendsEverySettingUnderItsKey)
{
    EXPECT_EQ(pack(), kyUVTypes::Success);
    EXPECT_EQ(solver.commands(), (Texts{"Init", "Import", "Pack", "Export"}));
    EXPECT_EQ(solver.table("Pack"), startSettings);

    PackSettings settings;
    settings.setTranslate(false);
    settings.setRotate(true);
    settings.setRotateMin(10);
    settings.setRotateMax(5); // nothing orders the two
    settings.setRotateStep(45);
    settings.setPreRotateMode(kyUVTypes::PreRotate3);
    settings.setPreScaleMode(kyUVTypes::PreScale2);
    settings.setPostScaleMode(kyUVTypes::PostScale0);
    settings.setResolution(1024);
    settings.setMutations(7);
    settings.setIslandPadding(0.5);
    settings.setTilePadding(0.25);
    settings.setBox(1, 2, 3, 4);
    settings.setTilesU(5);
    settings.setTilesV(6);
    settings.setTileAssignMode(kyUVTypes::TileOfBoxCenter);
    pack(settings);
    EXPECT_EQ(
        solver.table("Pack", 1),
        (Texts{"#Translate bool = bool false", "#Rotate.Min double 0.0 = double 10",
               "#Rotate.Max double 360.0 = double 5", "#Rotate.Step double 0.0 = double 45",
               "#Rotate.Mode int 2 = int 3", "#Scaling.Mode int 0 = int 3",
               "#LayoutScalingMode int 0 = int 1", "#Resolution int = int 1024",
               "#MaxMutations int 1 = int 7", "#SpacingSize double 0 = double 0.5",
               "#MarginSize double 0 = double 0.25", "#Box box2d 0.0 1.0 0.0 1.0 = box 1 2 3 4",
               "#MultiTile.SizeU int = int 5", "#MultiTile.SizeV int = int 6",
               R"(#TileAssignMode string "Specified" = string BBoxCenter)"}));
}

TEST_F(Pack, ASelectionPacksTheIslandsThatItTouches)
{
    // Numbered with gaps, and not in the order of the vertices.
    solver.islandOfVertex = {70, 70, 70, 70, 5, 5, 5, 5, 31, 31, 31, 31};
    EXPECT_EQ(pack(Ids{8, 5, 4}), kyUVTypes::Success);
    EXPECT_EQ(solver.commands(), (Texts{"Init", "Import", "Export", "Select", "Pack", "Export"}));
    EXPECT_EQ(solver.table("Export", 0),
              (Texts{"#IndexTable.VertexIDsToIslandIDs bool = bool true"}));
    EXPECT_EQ(solver.table("Select"),
              (Texts{R"(#PrimType string "Edge" = string Island)", "#Select bool = bool true",
                     "#List bool = bool true", "#IDs ints = ints [5 31]"}));
    Texts limited{"#ProcessIslandSelection bool = bool true"};
    limited.insert(limited.end(), startSettings.begin(), startSettings.end());
    EXPECT_EQ(solver.table("Pack"), limited);
    EXPECT_NE(output.take().find("\nPacking...\nPack islands: 2\nExported.\n"), std::string::npos);
}

TEST_F(Pack, ASelectionThatSinglesNoIslandOutPacksAll)
{
    // The last vertex belongs to no island.
    const std::vector<int> islands{0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, -1};
    for (const Ids& selected : {Ids{0, 4, 8}, Ids{11, 1000, 0xFFFFFFFF}}) {
        solver.reset();
        solver.islandOfVertex = islands;
        EXPECT_EQ(pack(selected), kyUVTypes::Success);
        EXPECT_EQ(solver.commands(), (Texts{"Init", "Import", "Export", "Pack", "Export"}));
        EXPECT_EQ(solver.table("Pack"), startSettings);
    }
}

TEST_F(Pack, AnErrorOnTheWayToTheIslandsEndsTheRun)
{
    solver.islandOfVertex = {0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2};
    for (const char* failing : {"Select", "Export"}) {
        solver.fail(failing);
        EXPECT_EQ(pack(Ids{0}), kyUVTypes::Failure);
        EXPECT_EQ(solver.commands().back(), failing);
    }
}

TEST_F(Pack, StartsFromTheSlotThatItIsGiven)
{
    const UVs slot{Vec2f(0.F, 0.F), Vec2f(7.F, 0.F), Vec2f(7.F, 7.F), Vec2f(0.F, 7.F)};
    mesh = osg::RefPtr<osg::Geometry>(quad());
    mesh->setTexSlot(3, tiny::texCoords(slot));
    kyUnfold3D::pack(mesh, kyUVTypes::UVSet3, uvs, PackSettings());
    EXPECT_EQ(uvs, slot);
}

} // namespace

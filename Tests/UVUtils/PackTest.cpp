#include "UVUtils/SolverFixture.h"

using namespace kyUnfold3D;

namespace
{

class Pack : public SolverFixture
{
protected:
    Pack() { mesh = osg::RefPtr<osg::Geometry>(quadsApart(3)); }
};

const Texts defaultTable{
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

TEST_F(Pack, SendsTheSettingsOfTheStart)
{
    EXPECT_EQ(pack(), kyUVTypes::Success);
    EXPECT_EQ(solver.commands(), (Texts{"Init", "Import", "Pack", "Export"}));
    EXPECT_EQ(solver.table("Pack"), defaultTable);
}

TEST_F(Pack, SendsEverySettingUnderItsKey)
{
    PackSettings settings;
    settings.setTranslate(false);
    settings.setRotate(true);
    settings.setRotateMin(10);
    settings.setRotateMax(20);
    settings.setRotateStep(5);
    settings.setPreRotateMode(kyUVTypes::PreRotateMode(3));
    settings.setPreScaleMode(kyUVTypes::PreScaleMode(2));
    settings.setPostScaleMode(kyUVTypes::PostScaleMode(0));
    settings.setResolution(1024);
    settings.setMutations(7);
    settings.setIslandPadding(0.5);
    settings.setTilePadding(0.25);
    settings.setBox(1, 2, 3, 4);
    settings.setTilesU(5);
    settings.setTilesV(6);
    settings.setTileAssignMode(kyUVTypes::TileAssignMode(0));
    kyUnfold3D::pack(mesh.get(), kyUVTypes::UVSet0, uvs, settings);
    EXPECT_EQ(
        solver.table("Pack"),
        (Texts{"#Translate bool = bool false", "#Rotate.Min double 0.0 = double 10",
               "#Rotate.Max double 360.0 = double 20", "#Rotate.Step double 0.0 = double 5",
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
    EXPECT_EQ(pack({8, 5, 4}), kyUVTypes::Success);
    EXPECT_EQ(solver.commands(), (Texts{"Init", "Import", "Export", "Select", "Pack", "Export"}));
    EXPECT_EQ(solver.table("Export", 0),
              (Texts{"#IndexTable.VertexIDsToIslandIDs bool = bool true"}));
    EXPECT_EQ(solver.table("Select"),
              (Texts{R"(#PrimType string "Edge" = string Island)", "#Select bool = bool true",
                     "#List bool = bool true", "#IDs ints = ints [5 31]"}));
    Texts limited{"#ProcessIslandSelection bool = bool true"};
    limited.insert(limited.end(), defaultTable.begin(), defaultTable.end());
    EXPECT_EQ(solver.table("Pack"), limited);
    EXPECT_NE(output.take().find("\nPack islands: 2\n"), std::string::npos);
}

TEST_F(Pack, ASelectionThatSinglesNoIslandOutPacksAll)
{
    for (const Ids& selected : {Ids{0, 4, 8}, Ids{1000, 0xFFFFFFFF}}) {
        solver.reset();
        solver.islandOfVertex = {0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2};
        EXPECT_EQ(pack(selected), kyUVTypes::Success);
        EXPECT_EQ(solver.commands(), (Texts{"Init", "Import", "Export", "Pack", "Export"}));
        EXPECT_EQ(solver.table("Pack"), defaultTable);
    }
}

TEST_F(Pack, AFailedQuestionForTheIslandsEndsTheRun)
{
    solver.on("Export", [](const auto&) { return RecordingSolver::error("no islands"); });
    EXPECT_EQ(pack({0}), kyUVTypes::Failure);
    EXPECT_EQ(solver.commands(), (Texts{"Init", "Import", "Export"}));
}

TEST_F(Pack, StartsFromTheSlotThatItIsGiven)
{
    mesh = osg::RefPtr<osg::Geometry>(quad());
    setUVs(
        mesh.get(), 3,
        {osg::Vec2f(0.F, 0.F), osg::Vec2f(7.F, 0.F), osg::Vec2f(7.F, 7.F), osg::Vec2f(0.F, 7.F)});
    kyUnfold3D::pack(mesh.get(), kyUVTypes::UVSet3, uvs, PackSettings());
    EXPECT_EQ(uvs.at(2), osg::Vec2f(7.F, 7.F));
}

} // namespace

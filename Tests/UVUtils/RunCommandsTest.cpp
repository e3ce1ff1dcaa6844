#include "UVUtils/SolverFixture.h"
#include "UVUtils/solver/OptimizeSettings.h"
#include "UVUtils/solver/SeamSettings.h"

#include <limits>

using namespace kyUnfold3D;

// What is sent to the solver, and what is taken from its answer.

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
        EXPECT_EQ(log.lines, (Texts{"errorNR: PackSettings: PreRotateMode unknown",
                                    "errorNR: PackSettings: PreScaleMode unknown",
                                    "errorNR: PackSettings: PostScaleMode unknown",
                                    "errorNR: PackSettings: TileAssignMode unknown"}));
    }
}

class Unfold : public SolverFixture
{};

TEST_F(Unfold, SendsTheCommandsThatItsArgumentsAskFor)
{
    struct Case
    {
        const char* name;
        Args args;
        Texts commands;
    };
    const Case cases[] = {
        {"plain", {}, {"Init", "Import", "Select", "Unfold", "Export"}},
        {"one direction",
         {.vertical = {0, 1}},
         {"Init", "Import", "Select", "Constrain", "Select", "Unfold", "Export"}},
        {"packed part",
         {.pack = &packSettings, .selected = {0}},
         {"Init", "Import", "Select", "Unfold", "Export", "Select", "Pack", "Export"}},
    };
    mesh = osg::RefPtr<osg::Geometry>(quadsApart(2));
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        solver.reset();
        solver.islandOfVertex = {0, 0, 0, 0, 1, 1, 1, 1};
        EXPECT_EQ(unfold(c.args), kyUVTypes::Success);
        EXPECT_EQ(solver.commands(), c.commands);
    }
}

TEST_F(Unfold, SendsTheMeshAndTheSettings)
{
    UnfoldSettings settings;
    settings.setOptimizeIterations(-7);
    settings.setRoomSpace(0.25);
    settings.setPreventTriangleFlips(false);
    uvs = {Vec2f(0.F, 0.F), Vec2f(5.F, 0.F), Vec2f(5.F, 5.F), Vec2f(0.F, 5.F)};
    unfold({.settings = settings, .mode = InputUVs});
    EXPECT_EQ(solver.table("Init"), (Texts{"#UndoHistorySize int = int 0"}));
    EXPECT_EQ(
        solver.table("Import"),
        (Texts{"#Data.PolySizes ints = ints [3 3]", "#Data.PolyXYZIDs ints = ints [0 1 2 0 2 3]",
               "#Data.CoordsXYZ doubles = doubles [0 0 0 1 0 0 1 1 0 0 1 0]",
               "#Data.PolyUVWIDs ints = ints [0 1 2 0 2 3]",
               "#Data.CoordsUVW doubles = doubles [0 0 0 5 0 0 5 5 0 0 5 0]"}));
    EXPECT_EQ(solver.table("Unfold"),
              (Texts{"#PrimType string Island = string Vertex",
                     "#ProcessSelection bool = bool true", "#ProcessAllIfNoneSelected bool (name)",
                     "#Iterations int 1 = int -1", "#BorderIntersections bool = bool true",
                     "#TriangleFlips bool = bool false", "#RoomSpace double 000.1 = double 0.25"}));
    EXPECT_EQ(solver.table("Export"),
              (Texts{"#Data table (name)", "#Data.UseImportedUVWPolygons bool = bool true"}));

    settings = UnfoldSettings();
    settings.setPreventBorderIntersections(false);
    unfold({.settings = settings});
    const Texts second = solver.table("Unfold", 1);
    EXPECT_EQ(Texts(second.begin() + 3, second.end()),
              (Texts{"#Iterations int 1 = int 1", "#BorderIntersections bool = bool false",
                     "#TriangleFlips bool = bool true", "#RoomSpace double 000.1 = double 0"}));
}

TEST_F(Unfold, ConstrainsHorizontalEdgesBeforeVerticalOnes)
{
    unfold({.horizontal = {1, 0, 3, 2}, .vertical = {2, 0}});
    const auto selectEdges = [](const char* ids) {
        return Texts{R"(#PrimType string "Edge" = string Edge)", "#ResetBefore bool = bool true",
                     "#Select bool = bool true", "#List bool = bool true",
                     std::string("#IDs ints = ints ") + ids};
    };
    const auto pin = [](const char* word) {
        return Texts{R"(#PrimType string "Vertex" = string Edge)",
                     std::string(R"(#Mode string "Pin" = string )") + word};
    };
    EXPECT_EQ(solver.table("Select", 0), selectEdges("[1 4]"));
    EXPECT_EQ(solver.table("Constrain", 0), pin("EdgeH"));
    EXPECT_EQ(solver.table("Select", 1), selectEdges("[0]"));
    EXPECT_EQ(solver.table("Constrain", 1), pin("EdgeV"));
}

TEST_F(Unfold, AListThatNamesAsManyVerticesAsThereAreSelectsAll)
{
    const Texts all{R"(#PrimType string "Edge" = string Vertex)", "#Select bool = bool true",
                    "#All bool = bool true"};
    const Texts some{R"(#PrimType string "Edge" = string Vertex)", "#Select bool = bool true",
                     "#List bool = bool true", "#IDs ints = ints [3 1]"};
    const std::vector<std::pair<Ids, Texts>> cases = {
        {{}, all}, {{3, 1}, some}, {{0, 1, 2, 3}, all}, {{1, 1, 1, 1, 1}, all}};
    for (const auto& [selected, table] : cases) {
        solver.reset();
        unfold({.selected = selected});
        EXPECT_EQ(solver.table("Select"), table) << selected.size();
    }
}

TEST_F(Unfold, ReadsTheAnswerBackWithoutWWhereItHasTheRightSize)
{
    uvs = {Vec2f(8.F, 8.F)};
    std::vector<double> answer;
    solver.on("Export", [&](const auto&) {
        return RecordingSolver::holding("#Data.CoordsUVW doubles", answer);
    });
    for (const std::size_t wrong : {15U, 11U, 0U}) {
        answer.resize(wrong);
        EXPECT_EQ(unfold(), kyUVTypes::Failure);
        EXPECT_EQ(uvs, (UVs{Vec2f(8.F, 8.F)}));
    }
    answer = {0, 1, 9, 2, 3, 9, 4, 5, 9, 6, 7, 9};
    EXPECT_EQ(unfold(), kyUVTypes::Success);
    EXPECT_EQ(uvs, (UVs{Vec2f(0.F, 1.F), Vec2f(2.F, 3.F), Vec2f(4.F, 5.F), Vec2f(6.F, 7.F)}));
    EXPECT_EQ(log.lines, Texts());
}

TEST_F(Unfold, WritesWhatItDoes)
{
    unfold({.horizontal = {0, 1}, .vertical = {1, 2}, .selected = {0, 1}});
    EXPECT_EQ(output.take(), "geo:\n"
                             "osg_positions 4\n"
                             "osg_indices 6\n"
                             "CompactShellMesh\n"
                             "triangles: 2\n"
                             "use geo data for input uvs\n"
                             "assigning 3d pos to UVW\n"
                             "Unfold3D SDK version: " +
                                 NU3D::CUnfold3DAPI::APIVersionString() +
                                 "\n"
                                 "Importing...\n"
                                 "Constraining edges Horizontal\n"
                                 "Constraining edges Vertical\n"
                                 "Selecting...\n"
                                 "selected vertex ids: 2\n"
                                 "Unfolding...\n"
                                 "Unfold done.\n"
                                 "Exported.\n"
                                 "newCoordsUVW = 12\n"
                                 "copying newCoordsUVWs to uvs\n");
}

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

class OptimizeAndSeam : public SolverFixture
{};

TEST_F(OptimizeAndSeam, OptimizeSendsConstraintsSelectionAndSettings)
{
    OptimizeSettings settings;
    settings.setIterations(0);
    settings.setPower(0.25F);
    settings.setPreventBorderIntersections(false);
    EXPECT_EQ(optimize(settings), kyUVTypes::Success);
    EXPECT_EQ(solver.table("Select", 2).back(), "#All bool = bool true");
    EXPECT_EQ(solver.table("Optimize"),
              (Texts{"#PrimType string Island = string Vertex",
                     "#ProcessSelection bool = bool true", "#ProcessAllIfNoneSelected bool (name)",
                     "#Iterations int 2 = int 0", "#BorderIntersection bool = bool false",
                     "#TriangleFlips bool = bool true", "#RoomSpace double 0.001 = double 0",
                     "#Mix double 1.0 = float 0.25", "#AngleDistanceMix double 1.0 = float 1"}));
    EXPECT_EQ(uvs, (UVs{Vec2f(0.F, 0.F), Vec2f(1.F, 0.F), Vec2f(1.F, 1.F), Vec2f(0.F, 1.F)}))
        << "without UVs from the positions";
}

TEST_F(OptimizeAndSeam, SeamsComeAsASelectionOfEdges)
{
    const std::pair<int, Texts> modes[] = {
        {1,
         {"#Organic table (name)", "#Organic.UsePipesCutter bool = bool false",
          "#Organic.SegAmount double = double 0"}},
        {2,
         {"#Manufactured table (name)", "#Manufactured.Angle double = double 89",
          "#Manufactured.MinPatchRatio double = double 0"}},
        {3,
         {"#Baking table (name)", "#Baking.Angle double = double 89",
          "#Baking.MinPatchNumPoly int = int 5"}},
        {4, {}}};
    std::vector<int> answer{1, 1, 0, 2, 2, 0, 0, 3, -1, 0}; // the last three name no edge
    solver.on("Select",
              [&](const auto&) { return RecordingSolver::holding("#EdgeSelection Ints", answer); });
    for (const auto& [mode, entries] : modes) {
        SeamSettings settings;
        settings.setMode(kyUVTypes::SeamMode(mode));
        EXPECT_EQ(seam(settings), kyUVTypes::Success);
        EXPECT_EQ(seams, (FlatEdgeList{2, 3, 2, 0}));
        Texts table{R"(#PrimType string "Edge" = string Edge)", "#Select bool = bool true",
                    "#ResetBefore bool = bool true", "#ReturnEdgesSel bool (enabled)"};
        table.insert(table.end(), entries.begin(), entries.end());
        EXPECT_EQ(solver.table("Select", mode - 1), table);
    }
    EXPECT_EQ(solver.commands().size(), 12U) << "nothing but Init, Import and Select";
    answer.clear();
    EXPECT_EQ(seam(), kyUVTypes::Success);
    EXPECT_EQ(seams, FlatEdgeList());
}

} // namespace

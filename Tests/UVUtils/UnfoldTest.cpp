#include "UVUtils/SolverFixture.h"

using namespace kyUnfold3D;

namespace
{

class Unfold : public SolverFixture
{};

TEST_F(Unfold, SendsTheCommandsThatItsArgumentsAskFor)
{
    struct Case
    {
        const char* name;
        bool pack;
        Ids horizontal, vertical, selected;
        Texts commands;
    };
    const Case cases[] = {
        {"plain", false, {}, {}, {}, {"Init", "Import", "Select", "Unfold", "Export"}},
        {"packed", true, {}, {}, {}, {"Init", "Import", "Select", "Unfold", "Pack", "Export"}},
        {"horizontal",
         false,
         {0, 1},
         {},
         {},
         {"Init", "Import", "Select", "Constrain", "Select", "Unfold", "Export"}},
        {"both directions",
         false,
         {0, 1},
         {1, 2},
         {},
         {"Init", "Import", "Select", "Constrain", "Select", "Constrain", "Select", "Unfold",
          "Export"}},
        {"packed part",
         true,
         {},
         {},
         {0},
         {"Init", "Import", "Select", "Unfold", "Export", "Select", "Pack", "Export"}},
    };
    mesh = osg::RefPtr<osg::Geometry>(quadsApart(2));
    const PackSettings packSettings;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        solver.reset();
        solver.islandOfVertex = {0, 0, 0, 0, 1, 1, 1, 1};
        EXPECT_EQ(kyUnfold3D::unfold(mesh.get(), kyUVTypes::UVSet0, uvs, Positions3D,
                                     UnfoldSettings(), c.pack ? &packSettings : nullptr,
                                     c.horizontal, c.vertical, c.selected),
                  kyUVTypes::Success);
        EXPECT_EQ(solver.commands(), c.commands);
    }
}

TEST_F(Unfold, OpensWithTheWholeMesh)
{
    unfold();
    EXPECT_EQ(solver.table("Init"), (Texts{"#UndoHistorySize int = int 0"}));
    EXPECT_EQ(
        solver.table("Import"),
        (Texts{"#Data.PolySizes ints = ints [3 3]", "#Data.PolyXYZIDs ints = ints [0 1 2 0 2 3]",
               "#Data.CoordsXYZ doubles = doubles [0 0 0 1 0 0 1 1 0 0 1 0]",
               "#Data.PolyUVWIDs ints = ints [0 1 2 0 2 3]",
               "#Data.CoordsUVW doubles = doubles [0 0 0 1 0 0 1 1 0 0 1 0]"}));
}

TEST_F(Unfold, HandsItsSettingsOver)
{
    UnfoldSettings settings;
    settings.setOptimizeIterations(-7);
    settings.setRoomSpace(0.25);
    settings.setPreventTriangleFlips(false);
    kyUnfold3D::unfold(mesh.get(), kyUVTypes::UVSet0, uvs, Positions3D, settings, nullptr, {}, {});
    EXPECT_EQ(solver.table("Unfold"),
              (Texts{"#PrimType string Island = string Vertex",
                     "#ProcessSelection bool = bool true", "#ProcessAllIfNoneSelected bool (name)",
                     "#Iterations int 1 = int -1", "#BorderIntersections bool = bool true",
                     "#TriangleFlips bool = bool false", "#RoomSpace double 000.1 = double 0.25"}));
}

TEST_F(Unfold, ConstrainsHorizontalEdgesBeforeVerticalOnes)
{
    kyUnfold3D::unfold(mesh.get(), kyUVTypes::UVSet0, uvs, Positions3D, UnfoldSettings(), nullptr,
                       {1, 0, 3, 2}, {2, 0});
    const auto selectEdges = [](const char* ids) {
        return Texts{R"(#PrimType string "Edge" = string Edge)", "#ResetBefore bool = bool true",
                     "#Select bool = bool true", "#List bool = bool true",
                     std::string("#IDs ints = ints ") + ids};
    };
    EXPECT_EQ(solver.table("Select", 0), selectEdges("[1 4]"));
    EXPECT_EQ(solver.table("Constrain", 0), (Texts{R"(#PrimType string "Vertex" = string Edge)",
                                                   R"(#Mode string "Pin" = string EdgeH)"}));
    EXPECT_EQ(solver.table("Select", 1), selectEdges("[0]"));
    EXPECT_EQ(solver.table("Constrain", 1), (Texts{R"(#PrimType string "Vertex" = string Edge)",
                                                   R"(#Mode string "Pin" = string EdgeV)"}));
}

TEST_F(Unfold, AListThatNamesAsManyVerticesAsThereAreSelectsAll)
{
    const Texts all{R"(#PrimType string "Edge" = string Vertex)", "#Select bool = bool true",
                    "#All bool = bool true"};
    const Texts some{R"(#PrimType string "Edge" = string Vertex)", "#Select bool = bool true",
                     "#List bool = bool true", "#IDs ints = ints [3 1]"};
    const std::vector<std::pair<Ids, Texts>> cases = {
        {{}, all}, {{3, 1}, some}, {{0, 1, 2, 3}, all}, {{1, 1, 1, 1, 1}, all}};
    for (std::size_t i = 0; i < cases.size(); ++i) {
        kyUnfold3D::unfold(mesh.get(), kyUVTypes::UVSet0, uvs, Positions3D, UnfoldSettings(),
                           nullptr, {}, {}, cases[i].first);
        EXPECT_EQ(solver.table("Select", static_cast<int>(i)), cases[i].second) << i;
    }
}

TEST_F(Unfold, ReadsTheAnswerBackWithoutW)
{
    solver.on("Export", [](const auto&) {
        return RecordingSolver::doubles("#Data.CoordsUVW doubles",
                                        {0, 1, 9, 2, 3, 9, 4, 5, 9, 6, 7, 9});
    });
    uvs = {osg::Vec2f(8.F, 8.F)};
    EXPECT_EQ(unfold(), kyUVTypes::Success);
    EXPECT_EQ(uvs, (UVs{osg::Vec2f(0.F, 1.F), osg::Vec2f(2.F, 3.F), osg::Vec2f(4.F, 5.F),
                        osg::Vec2f(6.F, 7.F)}));
    EXPECT_EQ(solver.table("Export"),
              (Texts{"#Data table (name)", "#Data.UseImportedUVWPolygons bool = bool true"}));
}

TEST_F(Unfold, AnAnswerOfTheWrongSizeIsRefusedWithoutAWord)
{
    const UVs before{osg::Vec2f(8.F, 8.F)};
    for (const std::vector<double>& answer : {std::vector<double>(11), std::vector<double>()}) {
        solver.on("Export", [&](const auto&) {
            return RecordingSolver::doubles("#Data.CoordsUVW doubles", answer);
        });
        uvs = before;
        EXPECT_EQ(unfold(), kyUVTypes::Failure);
        EXPECT_EQ(uvs, before);
    }
    EXPECT_EQ(log.lines, Texts());
}

TEST_F(Unfold, StartsFromTheCallersUVsWhenAsked)
{
    uvs = {osg::Vec2f(0.F, 0.F), osg::Vec2f(5.F, 0.F), osg::Vec2f(5.F, 5.F), osg::Vec2f(0.F, 5.F)};
    kyUnfold3D::unfold(mesh.get(), kyUVTypes::UVSet0, uvs, InputUVs, UnfoldSettings(), nullptr, {},
                       {});
    EXPECT_EQ(solver.table("Import").back(),
              "#Data.CoordsUVW doubles = doubles [0 0 0 5 0 0 5 5 0 0 5 0]");
}

TEST_F(Unfold, WritesWhatItDoes)
{
    kyUnfold3D::unfold(mesh.get(), kyUVTypes::UVSet0, uvs, Positions3D, UnfoldSettings(), nullptr,
                       {0, 1}, {1, 2}, {0, 1});
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

} // namespace

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
        Args args;
        Texts commands;
    };
    const Case cases[] = {
        {"plain", {}, {"Init", "Import", "Select", "Unfold", "Export"}},
        {"packed",
         {.pack = &packSettings},
         {"Init", "Import", "Select", "Unfold", "Pack", "Export"}},
        {"one direction",
         {.vertical = {0, 1}},
         {"Init", "Import", "Select", "Constrain", "Select", "Unfold", "Export"}},
        {"both directions",
         {.horizontal = {0, 1}, .vertical = {1, 2}},
         {"Init", "Import", "Select", "Constrain", "Select", "Constrain", "Select", "Unfold",
          "Export"}},
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

} // namespace

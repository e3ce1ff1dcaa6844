#include "PackRun.h"
#include "Surfaces.h"

#include "Unfold3D/commands/Commands.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

using namespace unfold3d;

namespace
{

NU3D::CRef table()
{
    return {NU3D::VALTYPE_TABLE, NU3D::VALPROP_VALUE};
}

TEST(Contract, AMissingArrayAndOneOfAnotherTypeReadAsEmpty)
{
    const NU3D::CRef result = table();
    result->Add("ids", NU3D::CRef(std::vector<int>{1, 2}, NU3D::VALPROP_VALUE));
    EXPECT_EQ(result->GetInts("ids"), (std::vector<int>{1, 2}));
    EXPECT_TRUE(result->GetDoubles("ids").empty());
    EXPECT_TRUE(result->GetInts("none").empty());
}

TEST(Contract, AnUnknownCommandIsAnErrorThatNamesIt)
{
    NU3D::CUnfold3DAPI api;
    const NU3D::CRef result = api.Do("Fold", table());
    ASSERT_TRUE(NU3D::CUnfold3DAPI::HasError(result));
    EXPECT_NE(NU3D::CUnfold3DAPI::GetErrorString(result).find("Fold"), std::string::npos);
    EXPECT_FALSE(NU3D::CUnfold3DAPI::HasWarning(result));
}

/// The first line about the UVs of a mesh.
std::string firstPlace(const NU3D::CRef& answer)
{
    answer->UpdateIfNeeded();
    const NU3D::CRef lines = answer->GetRef("Warning.TopoUV");
    const auto* errors = dynamic_cast<const NU3D::CTopoErrors*>(lines.get());
    return errors && errors->ErrorsNB() > 0 ? errors->GetError(0).Msg() : "";
}

TEST(Constrain, EdgesThatContradictEachOtherAreNamed)
{
    SolverSession run(surfaces::sheet(2, 2));
    run.pinEdges({0}, false);
    run.pinEdges({0}, true);
    EXPECT_NE(firstPlace(run.last()).find("Edge 0 between the vertices "), std::string::npos);
    run.pinEdges({0, 1, 2}, false); // all of the first triangle
    run.unfold();
    EXPECT_NE(firstPlace(run.last()).find("Island 0 (at vertex 0), vertices 0, "),
              std::string::npos)
        << firstPlace(run.last());
}

TEST(Unfold, AClosedIslandKeepsItsUVsAndSaysWhatToDo)
{
    SolverSession session(surfaces::tetrahedron());
    const std::vector<Vec2> before = session.exportUVs();
    session.unfold();
    ASSERT_TRUE(session.hasError());
    EXPECT_NE(session.error().find("Cut a seam"), std::string::npos) << session.error();
    EXPECT_EQ(session.exportUVs(), before);
}

void expectUnchanged(const Session& before, const Session& after)
{
    EXPECT_EQ(after.imported, before.imported);
    EXPECT_EQ(after.mesh.triangles, before.mesh.triangles);
    EXPECT_EQ(after.uvs, before.uvs);
    EXPECT_EQ(after.w, before.w);
    EXPECT_EQ(after.isChanged, before.isChanged);
}

/// Stops each command at one checkpoint after the other, until it comes to its end.
class StoppingEngine : public NU3D::Backend
{
public:
    void registerProgress(ProgressCallback) override {}
    void registerStop(StopCallback) override {}

    NU3D::CRef run(const std::string& name, const NU3D::CRef& params) override
    {
        SCOPED_TRACE(name);
        for (int checkpoint = 0;; checkpoint += 1 + checkpoint / 2, ++stopsOf[name]) {
            RunControl control;
            control.stopAtCheckpoint(checkpoint);
            Answer answer;
            const Session before = session_;
            try {
                commands_.at(name)(session_, Params(params), answer, control);
                return answer.table();
            } catch (const Stopped&) {
                expectUnchanged(before, session_);
            }
            EXPECT_GT(control.progress(), 0.0);
            EXPECT_LT(control.progress(), 1.0);
        }
    }

    static inline std::map<std::string, int> stopsOf;

private:
    const std::map<std::string, Command*> commands_{
        {"Import", runImport}, {"Select", runSelect},     {"Constrain", runConstrain},
        {"Unfold", runUnfold}, {"Optimize", runOptimize}, {"Pack", runPack},
        {"Export", runExport}};
    Session session_;
};

TEST(Stop, UntilThenEveryCheckpointMovesTheProgress)
{
    RunControl control;
    double before = control.progress();
    for (int i = 0; i < 1'000'000; ++i) {
        control.checkpoint();
        if (i % 50'000 == 0)
            control.approach(0.95, 0.3); // of which less and less is left
        ASSERT_GT(control.progress(), before) << i;
        before = control.progress();
    }
    control.setProgress(0.1);
    EXPECT_EQ(control.progress(), before) << "never back";
    EXPECT_LT(before, 1.0);
}

patchwork::Layout sideBySide(std::initializer_list<IslandMesh> meshes)
{
    patchwork::Layout layout;
    for (const IslandMesh& mesh : meshes) {
        const int first = layout.mesh.vertexCount();
        for (const Vec3& p : mesh.positions) {
            layout.mesh.positions.push_back(p);
            layout.uvs.push_back({p.x, p.y});
        }
        for (const auto& [a, b, c] : mesh.triangles)
            layout.mesh.triangles.push_back({a + first, b + first, c + first});
    }
    return layout;
}

// A finger crosses its border when it is laid flat, its pinned edges have to be drawn straight, and
// the tube has a hole to fill, and both come tangled: all stages have something to do.
TEST(Stop, AtAnyCheckpointLeavesTheSessionAsItWasUntilThereIsAResult)
{
    StoppingEngine::stopsOf.clear();
    NU3D::CUnfold3DAPI::setBackendFactory([] { return std::make_unique<StoppingEngine>(); });
    const patchwork::Layout layout =
        sideBySide({surfaces::finger(6, 8, 0.3, 0.3), surfaces::tube(6, 2, 1.0, 1.0)});
    PackRun run(layout);
    run.pinEdges({0, 5, 9}, true);
    run.select("Vertex", {0, 1, 2, 3, 4, 5, 20, 21, 22, 50, 51, 52, 53, 54, 55, 56, 57, 58});
    run.optimize({.power = 0.5F});
    EXPECT_FALSE(run.hasError()) << run.error();
    run.selectAllVertices();
    run.optimize({});
    EXPECT_FALSE(run.hasError()) << run.error();
    run.unfold();
    EXPECT_FALSE(run.hasError()) << run.error();
    PackKeys keys;
    keys.resolution = 64;
    run.pack(keys);
    EXPECT_FALSE(run.hasError()) << run.error();
    run.exportUVs();
    NU3D::CUnfold3DAPI::setBackendFactory(nullptr);

    for (const auto& [command, least] :
         {std::pair{"Import", 3}, {"Unfold", 8}, {"Optimize", 16}, {"Pack", 4}, {"Export", 1}})
        EXPECT_GE(StoppingEngine::stopsOf[command], least) << command;
}

} // namespace

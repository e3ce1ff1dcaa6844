#include "UVUtils/SolverFixture.h"
#include "Utils/kyStackedProgress.h"

#include <algorithm>
#include <stdexcept>

using namespace kyUnfold3D;

// How a run ends when the solver or the user does not let it go through.

namespace
{

class RunOutcome : public SolverFixture
{};

NU3D::CRef topology(const Texts& lines)
{
    std::vector<NU3D::CTopoError> errors(lines.begin(), lines.end());
    return NU3D::CRef(std::make_shared<NU3D::CTopoErrors>(std::move(errors)));
}

/// A result that makes a value only when it is asked to bring itself up to date.
class LateResult : public NU3D::CVal
{
public:
    LateResult() : CVal(Table{}) { Add("Warning.Topo3D"); }
    void UpdateIfNeeded() override { Add("Warning.Topo3D", topology({"first", "second"})); }
};

TEST_F(RunOutcome, AWarningIsLoggedWithItsTopologyLinesAndTheRunGoesOn)
{
    solver.on("Import", [](const auto&) {
        NU3D::CRef result(std::make_shared<LateResult>());
        result->Add("Warning", NU3D::CRef("100% odd", NU3D::VALPROP_VALUE));
        result->Add("Warning.TopoUV", topology({"third"}));
        result->Add("Error.Topo3D", topology({"of no error"}));
        return result;
    });
    EXPECT_EQ(unfold(), kyUVTypes::Success);
    EXPECT_EQ(log.lines, (Texts{"warning: Unfold3D warning: 100% odd", "info: first",
                                "info: second", "info: third"}));
}

TEST_F(RunOutcome, AnErrorIsLoggedAfterTheWarningAndEndsTheRun)
{
    solver.on("Import", [](const auto&) {
        NU3D::CRef result = RecordingSolver::holding("Warning", "odd");
        result->Add("Error", NU3D::CRef("bad", NU3D::VALPROP_VALUE));
        result->Add("Error.Topo3D", NU3D::CRef(3, NU3D::VALPROP_VALUE)); // no topology lines
        result->Add("Error.TopoUV", topology({"edge 3"}));
        kyStackedProgress::requestCancel(); // an error goes before a cancel
        return result;
    });
    EXPECT_EQ(unfold(), kyUVTypes::Failure);
    EXPECT_EQ(log.lines, (Texts{"warning: Unfold3D warning: odd", "error: Unfold3D error: bad",
                                "info: edge 3"}));
}

TEST_F(RunOutcome, AnErrorOfAnyCommandEndsTheRunThere)
{
    for (const char* failing : {"Init", "Import", "Select", "Constrain", "Unfold", "Pack"}) {
        SCOPED_TRACE(failing);
        solver.reset();
        solver.fail(failing);
        uvs = {Vec2f(8.F, 8.F)};
        EXPECT_EQ(unfold({.pack = &packSettings, .vertical = {0, 1}}), kyUVTypes::Failure);
        const Texts& commands = solver.commands();
        EXPECT_EQ(std::find(commands.begin(), commands.end(), failing), commands.end() - 1);
        EXPECT_EQ(uvs, (UVs{Vec2f(8.F, 8.F)}));
        const bool unfolded = output.take().find("Unfold done.") != std::string::npos;
        EXPECT_EQ(unfolded, std::string(failing) == "Pack");
    }
}

TEST_F(RunOutcome, AnEmptyHandleAsAResultIsHarmless)
{
    solver.on("Import", [](const auto&) { return NU3D::CRef(); });
    solver.on("Export", [](const auto&) { return NU3D::CRef(); });
    EXPECT_EQ(unfold(), kyUVTypes::Failure);
    EXPECT_EQ(solver.commands().back(), "Export");
}

TEST_F(RunOutcome, EachExceptionIsLoggedUnderTheNameOfItsOperation)
{
    struct Case
    {
        void (*raise)();
        std::string words;
    };
    const Case cases[] = {{[] { throw NU3D::CEx("50% gone"); }, "exception 50% gone"},
                          {[] { throw std::runtime_error("why"); }, "unknown exception why"},
                          {[] { throw 3; }, "unknown exception"}};
    for (const Case& c : cases) {
        for (const char* command : {"Init", "Import", "Pack"}) {
            solver.reset();
            solver.during(command, [&](const auto&) {
                EXPECT_NE(gSolverProgress, nullptr);
                c.raise();
            });
            log.lines.clear();
            EXPECT_EQ(unfold({.pack = &packSettings}), kyUVTypes::Failure);
            EXPECT_EQ(pack(), kyUVTypes::Failure);
            Texts expected{"error: Unfold3D (Unfold) " + c.words,
                           "error: Unfold3D (Packing) " + c.words};
            if (command != std::string("Pack")) {
                EXPECT_EQ(optimize(), kyUVTypes::Failure);
                EXPECT_EQ(seam(), kyUVTypes::Failure);
                expected.push_back("error: Unfold3D (Optimize) " + c.words);
                expected.push_back("error: Unfold3D (Seam) " + c.words);
            }
            EXPECT_EQ(log.lines, expected);
            EXPECT_EQ(gSolverProgress, nullptr);
            EXPECT_EQ(solver.alive(), 0);
        }
    }
}

TEST_F(RunOutcome, ACancelDuringACommandEndsTheRunAtItsCheck)
{
    for (const char* during : {"Init", "Import", "Select", "Unfold", "Export"}) {
        SCOPED_TRACE(during);
        solver.reset();
        solver.during(during, [](const RecordingSolver::Run& run) {
            EXPECT_FALSE(run.asksToStop());
            kyStackedProgress::requestCancel();
            EXPECT_TRUE(run.asksToStop());
        });
        EXPECT_EQ(unfold(), kyUVTypes::Cancelled);
        EXPECT_EQ(solver.commands().back(), during);
        EXPECT_TRUE(uvs.empty());
    }
    EXPECT_EQ(log.lines, Texts()) << "a cancelled run has nothing to say";
    solver.reset();
    EXPECT_EQ(unfold(), kyUVTypes::Success) << "the next run is not cancelled";
}

TEST_F(RunOutcome, AMeshThatCannotBeReadFailsWithoutAWordAndWithoutARun)
{
    mesh = osg::RefPtr<osg::Geometry>(geometryOf({osg::Pnt3f(0.F, 0.F, 0.F)}, {0, 0}));
    EXPECT_EQ(unfold(), kyUVTypes::Failure);
    EXPECT_EQ(pack(), kyUVTypes::Failure);
    EXPECT_EQ(solver.commands(), Texts());
    EXPECT_EQ(log.lines, Texts());
}

} // namespace

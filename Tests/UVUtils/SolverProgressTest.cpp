#include "UVUtils/SolverFixture.h"
#include "UVUtils/solver/SteadyClock.h"
#include "Utils/kyStackedProgress.h"

#include <limits>

using namespace kyUnfold3D;

namespace
{

constexpr std::int64_t second = 1'000'000'000;

/// A run whose clock stands still until a script moves it.
class SolverProgress : public SolverFixture
{
protected:
    SolverProgress()
    {
        setSteadyClock([this] { return now; });
        kyStackedProgress::setObserver([this](const kyStackedProgress& progress) {
            states.push_back(progress.name() + ": " + progress.state());
            fraction = progress.fraction();
        });
    }
    ~SolverProgress() override
    {
        setSteadyClock(nullptr);
        kyStackedProgress::setObserver(nullptr);
    }

    /// Has "Import" do this, with the callbacks of the run.
    void duringImport(std::function<void(const RecordingSolver::Run&)> work)
    {
        solver.on("Import", [this, work = std::move(work)](const RecordingSolver::Run& run) {
            output.take();
            work(run);
            imported = output.take();
            return RecordingSolver::nothing();
        });
    }

    std::int64_t now = 1000 * second;
    Texts states;
    double fraction = 0.0;
    std::string imported; ///< what "Import" wrote
};

const auto runsToOne = [](const RecordingSolver::Run& run) {
    for (int i = 1; i <= 100; ++i)
        run.progress(i / 100.0);
    return RecordingSolver::nothing();
};

TEST_F(SolverProgress, TheSharesOfARunAddUpToTheWhole)
{
    const PackSettings packSettings;
    for (const PackSettings* packed : {static_cast<const PackSettings*>(nullptr), &packSettings}) {
        for (const char* command : {"Import", "Unfold", "Pack"})
            solver.on(command, runsToOne);
        kyUnfold3D::unfold(mesh.get(), kyUVTypes::UVSet0, uvs, Positions3D, UnfoldSettings(),
                           packed, {}, {});
        EXPECT_NEAR(fraction, 1.0, 1e-9);
    }
    pack();
    EXPECT_NEAR(fraction, 1.0, 1e-9);
}

TEST_F(SolverProgress, EachPhaseHasItsShareOfAnUnfold)
{
    std::vector<double> atTheEndOf;
    for (const char* command : {"Import", "Unfold", "Pack"})
        solver.on(command, [&](const RecordingSolver::Run& run) {
            runsToOne(run);
            atTheEndOf.push_back(fraction);
            return RecordingSolver::nothing();
        });
    const PackSettings packSettings;
    kyUnfold3D::unfold(mesh.get(), kyUVTypes::UVSet0, uvs, Positions3D, UnfoldSettings(),
                       &packSettings, {}, {});
    ASSERT_EQ(atTheEndOf.size(), 3U);
    EXPECT_NEAR(atTheEndOf[0], 0.2, 1e-9);
    EXPECT_NEAR(atTheEndOf[1], 0.9, 1e-9);
    EXPECT_NEAR(atTheEndOf[2], 1.0, 1e-9);
}

TEST_F(SolverProgress, TellsTheUserThePhase)
{
    const PackSettings packSettings;
    kyUnfold3D::unfold(mesh.get(), kyUVTypes::UVSet0, uvs, Positions3D, UnfoldSettings(),
                       &packSettings, {}, {});
    EXPECT_EQ(states, (Texts{"unfold3dUnfold: ", "unfold3dUnfold: Importing...",
                             "unfold3dUnfold: Unfolding UVs...", "unfold3dUnfold: Packing UVs...",
                             "unfold3dUnfold: Packing UVs..."}));
    states.clear();
    pack();
    EXPECT_EQ(states.at(0), "unfold3dPack: ");
}

TEST_F(SolverProgress, ReportsAHundredthTheEndAndAfterAQuarterSecond)
{
    duringImport([this](const RecordingSolver::Run& run) {
        run.progress(0.005);
        EXPECT_EQ(output.take(), "");
        run.progress(0.25);
        EXPECT_EQ(output.take(), "  25 %        \r");
        run.progress(0.255);
        now += 250'000'000;
        run.progress(0.256);
        EXPECT_EQ(output.take(), "") << "not before more than 250 ms";
        now += 1;
        run.progress(0.2575);
        EXPECT_EQ(output.take(), "  25.75 %        \r");
        run.progress(0.995);
        EXPECT_EQ(output.take(), "  99.5 %        \r");
        run.progress(1.0);
        EXPECT_EQ(output.take(), "  100 %        \r\n");
        run.progress(1.0);
        EXPECT_EQ(output.take(), "  100 %        \r") << "the line ends once";
    });
    unfold();
    EXPECT_NEAR(fraction, 0.2, 1e-9);
}

TEST_F(SolverProgress, CountsOnlyDuringALongCommand)
{
    solver.on("Select", [this](const RecordingSolver::Run& run) {
        output.take();
        now += 100 * second;
        run.progress(0.5);
        EXPECT_EQ(output.take(), "");
        EXPECT_FALSE(run.asksToStop());
        return RecordingSolver::nothing();
    });
    EXPECT_EQ(unfold(), kyUVTypes::Success);
    EXPECT_EQ(log.lines, Texts());
}

TEST_F(SolverProgress, AMinuteWithoutProgressAsksToStopAndSaysSoOnce)
{
    duringImport([this](const RecordingSolver::Run& run) {
        run.progress(0.5);
        now += 60 * second - 1;
        run.progress(0.5);
        EXPECT_FALSE(run.asksToStop());
        now += 1;
        run.progress(0.5);
        EXPECT_TRUE(run.asksToStop());
        run.progress(0.9);
        EXPECT_TRUE(run.asksToStop()) << "too late";
    });
    EXPECT_EQ(unfold(), kyUVTypes::Success) << "what comes of a stop is the solver's";
    EXPECT_EQ(log.lines, (Texts{"errorNR: Unfold3D timeout: request stop because no progress for "
                                "> 60 seconds"}));
}

TEST_F(SolverProgress, AnyChangeWithinTheMinuteRestartsTheClock)
{
    duringImport([this](const RecordingSolver::Run& run) {
        run.progress(0.5);
        for (int i = 1; i <= 5; ++i) {
            now += 59 * second;
            run.progress(0.5 + i * 1e-9);
            EXPECT_FALSE(run.asksToStop());
        }
        now += 60 * second;
        run.progress(0.5 + 1e-6);
        EXPECT_TRUE(run.asksToStop()) << "a small change after the minute is no progress";
    });
    unfold();
}

TEST_F(SolverProgress, ALateButLargeStepIsProgress)
{
    duringImport([this](const RecordingSolver::Run& run) {
        now += 600 * second;
        run.progress(0.1);
        EXPECT_FALSE(run.asksToStop());
    });
    unfold();
    EXPECT_EQ(log.lines, Texts());
}

TEST_F(SolverProgress, EachCommandHasAMinuteOfItsOwn)
{
    const auto standsStill = [this](const RecordingSolver::Run& run) {
        EXPECT_FALSE(run.asksToStop());
        now += 60 * second;
        run.progress(0.0);
        EXPECT_TRUE(run.asksToStop());
        return RecordingSolver::nothing();
    };
    solver.on("Import", standsStill);
    solver.on("Unfold", standsStill);
    EXPECT_EQ(unfold(), kyUVTypes::Success);
    EXPECT_EQ(log.lines.size(), 2U);
}

TEST_F(SolverProgress, AFractionThatIsNoNumberDoesNotSpoilTheBar)
{
    duringImport([this](const RecordingSolver::Run& run) {
        now += second;
        run.progress(std::numeric_limits<double>::quiet_NaN());
        run.progress(1.0);
    });
    unfold();
    EXPECT_TRUE(fraction >= 0.0 && fraction <= 1.0);
}

TEST_F(SolverProgress, CallbacksBetweenRunsAreHarmless)
{
    onSolverProgress(0.5);
    EXPECT_FALSE(onSolverStopQuestion());
    EXPECT_EQ(output.take(), "");
    const SolverProgressScope scope(Importing, nullptr);
}

} // namespace

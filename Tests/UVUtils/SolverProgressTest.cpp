#include "UVUtils/SolverFixture.h"
#include "UVUtils/solver/SteadyClock.h"
#include "Utils/kyStackedProgress.h"

#include <gmock/gmock.h>

#include <limits>
#include <utility>

using namespace kyUnfold3D;

namespace
{

constexpr std::int64_t second = 1'000'000'000;

/// A run whose clock stands still until a script moves it.
class SolverProgress : public SolverFixture
{
protected:
    using Run = RecordingSolver::Run;

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

    /// Unfolds, with "Import" doing this.
    kyUVTypes::ReturnCode unfoldWith(std::function<void(const Run&)> duringImport)
    {
        solver.on("Import", [&](const Run& run) {
            output.take();
            duringImport(run);
            return RecordingSolver::nothing();
        });
        return unfold();
    }

    std::int64_t now = 1000 * second;
    Texts states;
    double fraction = 0.0;
};

TEST_F(SolverProgress, EachPhaseFillsItsShareOfTheRun)
{
    std::vector<double> fractions; // halfway through each phase, and at its end
    for (const char* command : {"Import", "Unfold", "Pack"})
        solver.on(command, [&](const Run& run) {
            for (const double progress : {0.5, 1.0}) {
                run.progress(progress);
                fractions.push_back(fraction);
            }
            return RecordingSolver::nothing();
        });
    const auto fractionsOf = [&](kyUVTypes::ReturnCode) { return std::exchange(fractions, {}); };
    const auto areAbout = [](const std::vector<double>& expected) {
        return testing::Pointwise(testing::DoubleNear(1e-9), expected);
    };
    EXPECT_THAT(fractionsOf(unfold({.pack = &packSettings})),
                areAbout({0.1, 0.2, 0.55, 0.9, 0.95, 1.0}));
    EXPECT_THAT(fractionsOf(unfold()), areAbout({0.1, 0.2, 0.6, 1.0}));
    EXPECT_THAT(fractionsOf(pack()), areAbout({0.25, 0.5, 0.75, 1.0}));
}

TEST_F(SolverProgress, TellsTheUserThePhase)
{
    unfold({.pack = &packSettings});
    EXPECT_EQ(states, (Texts{"unfold3dUnfold: ", "unfold3dUnfold: Importing...",
                             "unfold3dUnfold: Unfolding UVs...", "unfold3dUnfold: Packing UVs...",
                             "unfold3dUnfold: Packing UVs..."}));
    states.clear();
    pack();
    EXPECT_EQ(states.at(0), "unfold3dPack: ");
}

TEST_F(SolverProgress, ReportsAHundredthTheEndAndAfterAQuarterSecond)
{
    unfoldWith([this](const Run& run) {
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
        run.progress(0.258);
        EXPECT_EQ(output.take(), "") << "the quarter second begins again";
        run.progress(0.268);
        EXPECT_EQ(output.take(), "  26.8 %        \r");
        run.progress(0.995);
        EXPECT_EQ(output.take(), "  99.5 %        \r");
        run.progress(1.0);
        EXPECT_EQ(output.take(), "  100 %        \r\n");
        run.progress(1.0);
        EXPECT_EQ(output.take(), "  100 %        \r") << "the line ends once";
    });
    EXPECT_NEAR(fraction, 0.2, 1e-9);
}

TEST_F(SolverProgress, CountsOnlyDuringALongCommand)
{
    solver.on("Select", [this](const Run& run) {
        output.take();
        now += 100 * second;
        run.progress(0.5);
        EXPECT_EQ(output.take(), "");
        EXPECT_FALSE(run.asksToStop());
        return RecordingSolver::nothing();
    });
    EXPECT_EQ(unfold(), kyUVTypes::Success);

    onSolverProgress(0.5); // between runs
    EXPECT_FALSE(onSolverStopQuestion());
    const SolverProgressScope scope(Importing, nullptr);
    EXPECT_EQ(log.lines, Texts());
}

TEST_F(SolverProgress, AMinuteWithoutProgressAsksToStopAndSaysSoOnce)
{
    const auto duringImport = [this](const Run& run) {
        run.progress(0.5);
        now += 60 * second - 1;
        run.progress(0.5);
        EXPECT_FALSE(run.asksToStop());
        now += 1;
        run.progress(0.5);
        EXPECT_TRUE(run.asksToStop());
        output.take();
        run.progress(0.9);
        EXPECT_TRUE(run.asksToStop()) << "too late";
        EXPECT_EQ(output.take(), "");
    };
    EXPECT_EQ(unfoldWith(duringImport), kyUVTypes::Success)
        << "what comes of a stop is the solver's";
    EXPECT_EQ(log.lines, (Texts{"errorNR: Unfold3D timeout: request stop because no progress for "
                                "> 60 seconds"}));
}

TEST_F(SolverProgress, EachPhaseCountsFromItsOwnBeginning)
{
    solver.on("Unfold", [this](const Run& run) {
        output.take();
        run.progress(0.0);
        EXPECT_FALSE(run.asksToStop());
        EXPECT_EQ(output.take(), "");
        run.progress(0.5);
        return RecordingSolver::nothing();
    });
    solver.on("Pack", [this](const Run& run) {
        now += 60 * second;
        run.progress(0.5);
        EXPECT_FALSE(run.asksToStop());
        return RecordingSolver::nothing();
    });
    solver.on("Import", [this](const Run& run) {
        now += 60 * second;
        run.progress(0.0);
        EXPECT_TRUE(run.asksToStop());
        return RecordingSolver::nothing();
    });
    solver.on("Select", [this](const Run&) {
        now += second;
        return RecordingSolver::nothing();
    });
    EXPECT_EQ(unfold({.pack = &packSettings}), kyUVTypes::Success);
    EXPECT_EQ(log.lines.size(), 1U);
}

TEST_F(SolverProgress, AnyChangeWithinTheMinuteRestartsTheClock)
{
    unfoldWith([this](const Run& run) {
        run.progress(0.5);
        for (int i = 1; i <= 5; ++i) {
            now += 59 * second;
            run.progress(0.5 + i * 1e-9);
            EXPECT_FALSE(run.asksToStop());
        }
        now += 600 * second;
        run.progress(0.51);
        EXPECT_FALSE(run.asksToStop()) << "late, but a step that counts";
        now += 60 * second;
        run.progress(0.51 + 0.9e-5);
        EXPECT_TRUE(run.asksToStop()) << "a small change after the minute is no progress";
    });
}

TEST_F(SolverProgress, AFractionThatIsNoNumberDoesNotSpoilTheBar)
{
    unfoldWith([this](const Run& run) {
        now += second;
        run.progress(std::numeric_limits<double>::quiet_NaN());
        run.progress(1.0);
    });
    EXPECT_TRUE(fraction >= 0.0 && fraction <= 1.0);
}

} // namespace

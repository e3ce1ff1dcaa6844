#include "UVUtils/SolverFixture.h"
#include "UVUtils/solver/SteadyClock.h"
#include "Utils/kyStackedProgress.h"

#include <gmock/gmock.h>

#include <algorithm>
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
    kyUVTypes::ReturnCode unfoldWith(const std::function<void(const Run&)>& duringImport)
    {
        solver.during("Import", duringImport);
        return unfold();
    }

    std::int64_t now = 1000 * second;
    Texts states;
    double fraction = 0.0;
};

TEST_F(SolverProgress, EachPhaseIsToldAndFillsItsShareOfTheRun)
{
    std::vector<double> fractions; // halfway through each phase, and at its end
    for (const char* command : {"Import", "Unfold", "Pack"})
        solver.during(command, [&](const Run& run) {
            for (const double progress : {0.5, 1.0}) {
                run.progress(progress);
                fractions.push_back(fraction);
            }
        });
    const auto fractionsOf = [&](kyUVTypes::ReturnCode) { return std::exchange(fractions, {}); };
    const auto areAbout = [](const std::vector<double>& expected) {
        return testing::Pointwise(testing::DoubleNear(1e-9), expected);
    };
    EXPECT_THAT(fractionsOf(unfold({.pack = &packSettings})),
                areAbout({0.1, 0.2, 0.55, 0.9, 0.95, 1.0}));
    states.erase(std::unique(states.begin(), states.end()), states.end());
    EXPECT_EQ(states,
              (Texts{"unfold3dUnfold: ", "unfold3dUnfold: Importing...",
                     "unfold3dUnfold: Unfolding UVs...", "unfold3dUnfold: Packing UVs..."}));
    EXPECT_THAT(fractionsOf(unfold()), areAbout({0.1, 0.2, 0.6, 1.0}));
    states.clear();
    EXPECT_THAT(fractionsOf(pack()), areAbout({0.25, 0.5, 0.75, 1.0}));
    EXPECT_EQ(states.at(0), "unfold3dPack: ");
}

TEST_F(SolverProgress, ReportsAHundredthTheEndAndAfterAQuarterSecond)
{
    struct Step
    {
        std::int64_t waits;
        double progress;
        const char* line;
    };
    const Step steps[] = {
        {0, 0.005, ""},
        {0, 0.25, "  25 %        \r"},
        {0, 0.255, ""},
        {250'000'000, 0.256, ""}, // not before more than 250 ms
        {1, 0.2575, "  25.75 %        \r"},
        {0, 0.258, ""}, // the quarter second begins again
        {0, 0.268, "  26.8 %        \r"},
        {0, 0.995, "  99.5 %        \r"},
        {0, 1.0, "  100 %        \r\n"},
        {0, 1.0, "  100 %        \r"}, // the line ends once
    };
    unfoldWith([&](const Run& run) {
        output.take();
        for (const Step& step : steps) {
            now += step.waits;
            run.progress(step.progress);
            EXPECT_EQ(output.take(), step.line) << step.progress;
        }
    });
    EXPECT_NEAR(fraction, 0.2, 1e-9);
}

TEST_F(SolverProgress, CountsOnlyDuringALongCommand)
{
    solver.during("Select", [this](const Run& run) {
        output.take();
        now += 100 * second;
        run.progress(0.5);
        EXPECT_EQ(output.take(), "");
        EXPECT_FALSE(run.asksToStop());
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
    solver.during("Unfold", [this](const Run& run) {
        output.take();
        run.progress(0.0);
        EXPECT_FALSE(run.asksToStop());
        EXPECT_EQ(output.take(), "");
        run.progress(0.5);
    });
    solver.during("Pack", [this](const Run& run) {
        now += 60 * second;
        run.progress(0.5);
        EXPECT_FALSE(run.asksToStop());
    });
    solver.during("Import", [this](const Run& run) {
        now += 60 * second;
        run.progress(0.0);
        EXPECT_TRUE(run.asksToStop());
    });
    solver.during("Select", [this](const Run&) { now += second; });
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

#include "Utils/kyProgress.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace
{

TEST(StackedProgress, ANestedOneFillsTheShareOfTheOuterOne)
{
    kyStackedProgress outer("outer", 1.0);
    outer.setScale(0.5);
    {
        kyStackedProgress inner("inner", 10.0);
        EXPECT_EQ(inner.outer(), &outer);
        inner.incrementBy(5.0);
        EXPECT_DOUBLE_EQ(outer.fraction(), 0.25);
        inner.incrementBy(50.0);
        EXPECT_DOUBLE_EQ(outer.fraction(), 0.5);
    }
    outer.incrementBy(1.0);
    EXPECT_DOUBLE_EQ(outer.fraction(), 1.0);
}

TEST(StackedProgress, NumbersThatMeanNothingAreHarmless)
{
    kyStackedProgress none("none", 0.0);
    none.incrementBy(1.0);
    EXPECT_EQ(none.fraction(), 0.0);

    kyStackedProgress progress("some", 1.0);
    progress.incrementBy(std::numeric_limits<double>::quiet_NaN());
    progress.incrementBy(std::numeric_limits<double>::infinity());
    progress.incrementBy(-1.0);
    EXPECT_EQ(progress.fraction(), 0.0);
}

TEST(StackedProgress, ACancelRequestHoldsUntilAnOutermostEnds)
{
    kyStackedProgress::requestCancel();
    {
        kyStackedProgress outer("outer", 1.0);
        EXPECT_TRUE(outer.cancelled()) << "asked just before the work began";
        {
            kyStackedProgress inner("inner", 1.0);
            EXPECT_TRUE(inner.cancelled());
        }
        EXPECT_TRUE(outer.cancelled()) << "the end of a nested one changes nothing";
    }
    const kyStackedProgress next("next", 1.0);
    EXPECT_FALSE(next.cancelled());
}

TEST(StackedProgress, AnObserverSeesBeginningStateChangeAndEnd)
{
    std::vector<std::string> seen;
    kyStackedProgress::setObserver([&](const kyStackedProgress& progress) {
        seen.push_back(progress.name() + "|" + progress.state() + "|" +
                       std::to_string(static_cast<int>(progress.fraction() * 100)) +
                       (progress.running() ? "" : "|end"));
    });
    {
        kyStackedProgress progress("run", 2.0);
        progress.setState("Working...");
        progress.incrementBy(1.0);
    }
    kyStackedProgress::setObserver(nullptr);
    const kyStackedProgress unseen("unseen", 1.0);
    EXPECT_EQ(seen, (std::vector<std::string>{"run||0", "run|Working...|0", "run|Working...|50",
                                              "run|Working...|50|end"}));
}

TEST(Progress, RunsAsAStackedOneUnlessItIsHidden)
{
    std::vector<std::string> seen;
    kyStackedProgress::setObserver([&](const kyStackedProgress& progress) {
        seen.push_back(progress.name() + std::to_string(progress.fraction() * 100));
    });
    kyProgress& display = *kyProgress::the();
    display.initProgress("shown", 200, kyProgress::Visible);
    display.initProgress(nullptr, 1, kyProgress::Hidden);
    display.incrementProgressBy(50);
    display.terminateProgress();
    display.incrementProgressBy(50);
    display.terminateProgress();
    display.incrementProgressBy(50);
    display.terminateProgress();
    kyStackedProgress::setObserver(nullptr);
    EXPECT_EQ(seen,
              (std::vector<std::string>{"shown0.000000", "shown25.000000", "shown25.000000"}));
}

} // namespace

#include "OpenSG/Log.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

using namespace osg;

namespace
{

TEST(Log, ALineReachesTheHandlerThatIsSetUntilItTakesItselfAway)
{
    using Lines = std::vector<std::tuple<unsigned, std::string, std::string>>;
    Lines lines;
    setLogHandler([&lines](unsigned level, const std::string& module, const std::string& text) {
        const bool isLast = text == "last";
        EXPECT_TRUE(!isLast || setLogHandler({})) << "gives back the one that was set";
        lines.emplace_back(level, module, text);
    });
    log(LogLevel::Notice, "OpenSG", "100% of %s");
    log(LogLevel::Info, "OpenSG", "last");
    log(LogLevel::Notice, "OpenSG", "unheard");
    EXPECT_EQ(lines, (Lines{{2, "OpenSG", "100% of %s"}, {3, "OpenSG", "last"}}));
}

TEST(Log, WithoutAHandlerWarningsGoToStandardErrorAndTheRestNowhere)
{
    testing::internal::CaptureStderr();
    log(LogLevel::Warning, "OpenSG", "look");
    log(LogLevel::Notice, "OpenSG", "quiet");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "OpenSG: look\n");
}

} // namespace

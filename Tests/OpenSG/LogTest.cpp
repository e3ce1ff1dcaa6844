#include "OpenSG/Log.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

using namespace osg;

namespace
{

TEST(Log, ALineReachesTheHandlerThatIsSet)
{
    std::vector<std::tuple<unsigned, std::string, std::string>> lines;
    setLogHandler([&](unsigned level, const std::string& module, const std::string& text) {
        lines.emplace_back(level, module, text);
    });
    log(LogLevel::Notice, "OpenSG", "100% of %s");
    EXPECT_TRUE(setLogHandler({})) << "gives back the one that was set";
    log(LogLevel::Notice, "OpenSG", "unheard");
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0], std::tuple(2U, "OpenSG", "100% of %s"));
}

TEST(Log, WithoutAHandlerWarningsGoToStandardErrorAndTheRestNowhere)
{
    testing::internal::CaptureStderr();
    log(LogLevel::Warning, "OpenSG", "look");
    log(LogLevel::Notice, "OpenSG", "quiet");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "OpenSG: look\n");
}

TEST(Log, AHandlerMayTakeItselfAway)
{
    int calls = 0;
    setLogHandler([&calls](unsigned, const std::string&, const std::string&) {
        setLogHandler({});
        ++calls;
    });
    log(LogLevel::Info, "OpenSG", "first");
    log(LogLevel::Info, "OpenSG", "second");
    EXPECT_EQ(calls, 1);
}

} // namespace

#include "Utils/kyLog.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{

class Log : public testing::Test
{
protected:
    void SetUp() override
    {
        kyLog::setSink([this](const kyLog::Line& line) { lines.push_back(line); });
    }
    void TearDown() override { kyLog::setSink(nullptr); }

    std::vector<kyLog::Line> lines;
};

TEST_F(Log, EachFormReachesTheSinkWithItsLevelAndItsMark)
{
    kyLog::error("%i", 1);
    kyLog::warning("%i", 2);
    kyLog::info("%i", 3);
    kyLog::errorNR("%i", 4);
    kyLog::warningNR("%i", 5);
    kyLog::infoNR("%i", 6);

    ASSERT_EQ(lines.size(), 6U);
    const kyLog::Level levels[] = {kyLog::Error, kyLog::Warning, kyLog::Info};
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].level, levels[i % 3]) << i;
        EXPECT_EQ(lines[i].forRecordOnly, i >= 3) << i;
        EXPECT_EQ(lines[i].text, std::to_string(i + 1));
    }
}

TEST_F(Log, AnArgumentIsTakenAsItIsWhateverItsLength)
{
    const std::string name = "100%s%n" + std::string(100000, 'x');
    kyLog::error("Error on geometry '%s': %s", name.c_str(), "");
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].text, "Error on geometry '" + name + "': ");
}

TEST_F(Log, WithoutASinkLinesGoToStandardError)
{
    kyLog::setSink(nullptr);
    testing::internal::CaptureStderr();
    kyLog::warning("loose %s", "end");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Warning: loose end\n");
    EXPECT_TRUE(lines.empty());
}

} // namespace

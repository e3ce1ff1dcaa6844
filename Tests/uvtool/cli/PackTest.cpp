#include "uvtool/ObjBuilders.h"
#include "uvtool/TempFolder.h"
#include "uvtool/ToolRun.h"

#include "commands/LayoutWork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <sstream>

namespace
{

using namespace uvtool;
using namespace uvtool::test;
using testing::HasSubstr;

/// Squares of three sizes, all in one place of the UV plane.
std::string stackedSquares(int count)
{
    ObjBuilder builder;
    for (int i = 0; i < count; ++i)
        builder.object("square").square(10.0 * i, 1 + i % 3);
    return builder.text();
}

class Pack : public testing::Test
{
protected:
    /// Packs a file with that text.
    ToolRun pack(const std::string& text, const std::vector<std::string>& options = {}) const
    {
        std::vector<std::string> arguments{"pack", folder.write("in.obj", text), "-o", out};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return runTool(arguments);
    }

    const TempFolder folder;
    const std::string out = folder / "out.obj";
};

TEST_F(Pack, KeepsGapAndMarginInTexelsOfTheBox)
{
    struct Case
    {
        std::vector<std::string> options;
        double gap;
        double margin;
        std::vector<double> box; ///< u0, v0, u1, v1
    };
    const Case cases[] = {
        {{}, 2, 1, {0, 0, 1, 1}},
        {{"--gap", "6"}, 6, 3, {0, 0, 1, 1}},
        {{"--gap", "0", "--margin", "10"}, 0, 10, {0, 0, 1, 1}},
        {{"--gap", "1", "--box", "-1", "2", "3", "3"}, 1, 0.5, {-1, 2, 3, 3}},
        {{"--tiles", "2x2"}, 2, 1, {0, 0, 2, 2}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.options));
        std::vector<std::string> options{"--json", "--resolution", "64"};
        options.insert(options.end(), c.options.begin(), c.options.end());
        const ToolRun run = pack(stackedSquares(5), options);
        ASSERT_EQ(run.status, Done) << run.err;
        const nlohmann::json check = run.json()["check"];
        EXPECT_EQ(check["islands"], 5);
        EXPECT_EQ(check["sound"], true);
        EXPECT_EQ(check["outsideIslands"], 0);
        EXPECT_GE(check["gapTexels"], c.gap - 1e-3);
        EXPECT_GE(check["marginTexels"], c.margin - 1e-3);
        const std::vector<double> bounds = check["bounds"];
        EXPECT_GE(bounds[0], c.box[0]);
        EXPECT_GE(bounds[1], c.box[1]);
        EXPECT_LE(bounds[2], c.box[2]);
        EXPECT_LE(bounds[3], c.box[3]);
    }
}

TEST_F(Pack, SizesAreThoseThatTheModeSays)
{
    // The second is three times as large in UV as the first, and as large in space.
    const std::string text(
        "v 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nvt 1 0\nvt 0 1\nf 1/1 2/2 3/3\n"
        "o second\nv 5 0 0\nv 6 0 0\nv 5 1 0\nvt 0 0\nvt 3 0\nvt 0 3\nf 4/4 5/5 6/6\n");
    const auto ratio = [&](const std::string& mode) {
        const nlohmann::json geometries =
            pack(text, {"--json", "--resolution", "64", "--scale-mode", mode}).json()["geometries"];
        const double first = geometries[0]["check"]["area"];
        return double{geometries[1]["check"]["area"]} / first;
    };
    EXPECT_NEAR(ratio("total"), 9.0, 1e-4);
    EXPECT_NEAR(ratio("area"), 1.0, 1e-5);
}

TEST_F(Pack, IslandsKeepTheirFaultsAndTheCommandSucceeds)
{
    // The second triangle is folded over the first.
    const ToolRun run = pack("v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n"
                             "vt 0 0\nvt 1 0\nvt 1 1\nvt .9 .1\n"
                             "f 1/1 2/2 3/3\nf 1/1 3/3 4/4\n",
                             {"--json"});
    ASSERT_EQ(run.status, Done) << run.err;
    EXPECT_EQ(run.json()["check"]["flipped"], 1);
    EXPECT_EQ(run.json()["check"]["overlapsBetween"], 0);
}

TEST_F(Pack, FailsWithAReasonWithoutUVsAndWithoutRoomForTheGaps)
{
    const ToolRun unmapped = pack(ObjBuilder().dome(2).text());
    EXPECT_THAT(unmapped.err, HasSubstr("nothing to pack"));
    const ToolRun tight =
        pack(stackedSquares(10), {"--resolution", "16", "--gap", "7", "--margin", "0"});
    for (const ToolRun& run : {unmapped, tight}) {
        EXPECT_EQ(run.status, Failed);
        EXPECT_EQ(run.lineCount(), 1) << run.err;
    }
    EXPECT_FALSE(std::filesystem::exists(out));
}

/// A pack of two squares up to the point where the UVs are there: the squares side by side, with a
/// gap of 0.1 between them and a margin of 0.1. The solver makes no mistakes, so they are put in by
/// hand.
class WorkAtHand
{
public:
    WorkAtHand()
    {
        options.common.input = folder.write(
            "in.obj", ObjBuilder().object("a").square(0, 1).object("b").square(3, 1).text());
        options.output = folder / "out.obj";
        options.pack.resolution = 100;
        options.pack.gap = 10;
        options.pack.margin = 10;
        task.read();
        work.start(WithUVs);
        work.makeParts();
        for (std::size_t i = 0; i < 2; ++i) {
            takeUVs(work.parts[i], task.geometry(i), 0);
            for (Vec2f& uv : work.parts[i].uvs)
                uv = {0.1F + 0.3F * uv[0] + 0.41F * static_cast<float>(i), 0.11F + 0.3F * uv[1]};
        }
    }

    TempFolder folder;
    Options options;
    std::ostringstream text;
    Console console{text, text, false};
    Task task{"pack", options, console};
    LayoutWork work{task};
};

TEST(LayoutWork, ResultsThatFailTheirCheckAreNotWritten)
{
    using Uvs = std::vector<Vec2f>;
    struct Case
    {
        const char* name;
        std::function<void(Uvs& first, Uvs& second)> damage;
        const char* says; ///< empty: nothing is wrong
    };
    const Case cases[] = {
        {"nothing", [](Uvs&, Uvs&) {}, ""},
        {"a value that isn't finite",
         [](Uvs& first, Uvs&) { first[1][0] = std::numeric_limits<float>::quiet_NaN(); },
         "isn't finite (first: triangle 0 of geometry 0)"},
        {"a fold",
         [](Uvs& first, Uvs&) {
             first[3] = {0.35F, 0.15F};
         },
         "1 flipped triangle (first: triangle 1 of geometry 0)"},
        {"one island on the other",
         [](Uvs& first, Uvs& second) {
             second = first;
             second[0][0] += 0.01F;
         },
         "below another island"},
        {"too near", [](Uvs&, Uvs& second) { second[0][0] -= 0.05F; }, "a gap of 0.6"},
        {"too near to the edge", [](Uvs& first, Uvs&) { first[0][1] = 0.05F; }, "a margin of 0.5"},
        {"outside", [](Uvs& first, Uvs&) { first[0][1] = -0.05F; }, "1 island outside its box"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        WorkAtHand hand;
        c.damage(hand.work.parts[0].uvs, hand.work.parts[1].uvs);
        std::string error;
        int status = Done;
        try {
            hand.work.putIntoDocument({}, true);
        } catch (const CommandError& failure) {
            error = failure.what();
            status = failure.status();
        }
        EXPECT_EQ(status, std::string(c.says).empty() ? Done : Unsound);
        EXPECT_THAT(error, HasSubstr(c.says));
    }
}

} // namespace

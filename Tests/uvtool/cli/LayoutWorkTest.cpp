// What becomes of results that aren't as they should be. The solver doesn't give any, so they are
// put into a command's work by hand.

#include "uvtool/ObjBuilders.h"
#include "uvtool/TempFolder.h"

#include "cli/ExitStatus.h"
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

/// A command about two squares of an OBJ, up to the point where the UVs are there: the squares side
/// by side, with a gap of 0.1 between them and a margin of 0.1.
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

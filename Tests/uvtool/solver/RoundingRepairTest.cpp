#include "solver/RoundingRepair.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace
{

using namespace uvtool;

/// A fan of very thin triangles around a point near (0.7, 0.7), turned a little, and the same in
/// doubles.
struct ThinFan
{
    std::vector<std::array<double, 2>> exact;
    std::vector<std::uint32_t> triangles;

    explicit ThinFan(unsigned seed, double thickness)
    {
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> angles(0, 6.28);
        const double turn = angles(random);
        const auto add = [&](double x, double y) {
            exact.push_back({0.7 + x * std::cos(turn) - y * std::sin(turn),
                             0.7 + x * std::sin(turn) + y * std::cos(turn)});
        };
        add(0, 0);
        for (int i = 0; i <= 20; ++i) {
            add(0.1 + 0.001 * i, i * thickness);
            if (i > 0)
                triangles.insert(triangles.end(), {0, static_cast<std::uint32_t>(i),
                                                   static_cast<std::uint32_t>(i + 1)});
        }
    }

    std::vector<Vec2f> rounded() const
    {
        std::vector<Vec2f> uvs;
        uvs.reserve(exact.size());
        for (const auto& point : exact)
            uvs.push_back({static_cast<float>(point[0]), static_cast<float>(point[1])});
        return uvs;
    }
};

std::ptrdiff_t turnedOver(const ThinFan& fan, const std::vector<Vec2f>& uvs)
{
    const std::vector<std::int8_t> turns = turnsOf(fan.triangles, uvs);
    return std::count_if(turns.begin(), turns.end(), [](std::int8_t turn) { return turn <= 0; });
}

TEST(RoundingRepair, TurnsThinTrianglesBack)
{
    const std::vector<std::int8_t> wanted(20, 1);
    std::ptrdiff_t before = 0;
    for (unsigned seed = 0; seed < 50; ++seed) {
        SCOPED_TRACE(seed);
        const ThinFan fan(seed, 2e-8);
        for (const bool vIsTurned : {false, true}) {
            std::vector<Vec2f> uvs = fan.rounded();
            if (vIsTurned)
                roundForTurnedV(uvs);
            before += turnedOver(fan, uvs);
            repairRounding(fan.triangles, wanted, vIsTurned, uvs);
            EXPECT_EQ(turnedOver(fan, uvs), 0);
            for (std::size_t v = 0; v < uvs.size(); ++v) {
                EXPECT_NEAR(uvs[v][0], fan.exact[v][0], 1e-5);
                EXPECT_NEAR(uvs[v][1], fan.exact[v][1], 1e-5);
                if (vIsTurned) {
                    EXPECT_EQ(1.0F - (1.0F - uvs[v][1]), uvs[v][1]);
                }
            }
        }
    }
    EXPECT_GT(before, 100); // the fans are thin enough to need it
}

TEST(RoundingRepair, LeavesAloneWhatTurnsAsItShould)
{
    const ThinFan fan(1, 1e-3);
    const std::vector<Vec2f> before = fan.rounded();
    std::vector<Vec2f> uvs = before;
    repairRounding(fan.triangles, turnsOf(fan.triangles, uvs), false, uvs);
    EXPECT_EQ(uvs, before);
}

TEST(RoundingRepair, KeepsMirroredTrianglesAndGivesUpOnHopelessOnes)
{
    std::vector<Vec2f> uvs{{0, 0}, {0, 1}, {1, 0}, {0.5F, 0.5F}, {0.5F, 0.5F}, {0.5F, 0.5F}};
    const std::vector<Vec2f> before = uvs;
    const std::vector<std::uint32_t> triangles{0, 1, 2, 3, 4, 5};
    repairRounding(triangles, std::vector<std::int8_t>{-1, 0}, false, uvs);
    EXPECT_EQ(uvs, before);
    // Two triangles over one vertex list that want to turn both ways.
    const std::vector<std::uint32_t> torn{0, 1, 2, 0, 1, 2};
    repairRounding(torn, std::vector<std::int8_t>{1, -1}, false, uvs);
    for (const Vec2f& uv : uvs)
        EXPECT_TRUE(std::isfinite(uv[0]) && std::isfinite(uv[1]));
}

} // namespace

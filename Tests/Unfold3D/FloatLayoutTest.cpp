#include "LayoutChecks.h"
#include "Surfaces.h"

#include "Unfold3D/layout/FloatLayout.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace unfold3d;

namespace
{

bool areFloats(const std::vector<Vec2>& uv)
{
    return std::all_of(uv.begin(), uv.end(), [](Vec2 p) {
        return p.x == static_cast<double>(static_cast<float>(p.x)) &&
               p.y == static_cast<double>(static_cast<float>(p.y));
    });
}

double largestMove(const std::vector<Vec2>& a, const std::vector<Vec2>& b)
{
    double largest = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, length(a[i] - b[i]));
    return largest;
}

/// A sheet of unit squares, each cut by a cross whose middle lies `rise` above its lower edge, seen
/// at `offset` from the origin.
struct ThinSheet
{
    std::vector<Triangle> triangles;
    std::vector<Vec2> uv;
};
ThinSheet thinSheet(int squares, double rise, double offset)
{
    ThinSheet sheet;
    for (int i = 0; i <= squares; ++i)
        for (const double y : {0.0, 1.0})
            sheet.uv.push_back({offset + i, offset + y});
    for (int i = 0; i < squares; ++i) {
        const int a = 2 * i;
        const int middle = static_cast<int>(sheet.uv.size());
        sheet.uv.push_back({offset + i + 0.37, offset + rise});
        const int ring[4] = {a, a + 2, a + 3, a + 1};
        for (int k = 0; k < 4; ++k)
            sheet.triangles.push_back({ring[k], ring[(k + 1) % 4], middle});
    }
    return sheet;
}

TEST(FloatLayout, ACoarseLayoutIsJustRounded)
{
    const IslandMesh mesh = surfaces::sheet(7, 7);
    std::vector<Vec2> uv;
    uv.reserve(mesh.positions.size());
    for (const Vec3& p : mesh.positions)
        uv.push_back({p.x / 3.0, p.y / 7.0});
    const std::vector<Vec2> before = uv;
    const FloatRounding rounding = roundToFloats(mesh.triangles, uv);
    EXPECT_EQ(rounding.moved, 0);
    EXPECT_EQ(rounding.flipsLeft, 0);
    EXPECT_TRUE(areFloats(uv));
    EXPECT_LT(largestMove(uv, before), 2e-7);
}

TEST(FloatLayout, ThinTrianglesThatRoundingWouldCollapseAreKeptOpen)
{
    for (const double offset : {1.0, 10.0, 1000.0}) {
        SCOPED_TRACE(offset);
        ThinSheet sheet = thinSheet(40, 1e-9, offset);
        const std::vector<Vec2> before = sheet.uv;
        const FloatRounding rounding = roundToFloats(sheet.triangles, sheet.uv);
        EXPECT_GT(rounding.moved, 0);
        EXPECT_EQ(rounding.flipsLeft, 0);
        EXPECT_EQ(layout::countFlips(sheet.triangles, sheet.uv), 0);
        EXPECT_TRUE(areFloats(sheet.uv));
        EXPECT_LT(largestMove(sheet.uv, before), 1e-6 * (offset + 40.0));
    }
}

TEST(FloatLayout, HeldCoordinatesDoNotMove)
{
    ThinSheet sheet = thinSheet(10, 1e-9, 1.0);
    std::vector<std::uint8_t> held(sheet.uv.size(), HoldV);
    for (std::size_t i = 22; i < held.size(); ++i)
        held[i] = HoldU; // the middles may rise, but not shift
    const std::vector<Vec2> before = sheet.uv;
    EXPECT_EQ(roundToFloats(sheet.triangles, sheet.uv, held).flipsLeft, 0);
    for (std::size_t i = 0; i < held.size(); ++i) {
        if (held[i] == HoldV)
            EXPECT_EQ(sheet.uv[i].y, static_cast<double>(static_cast<float>(before[i].y)));
        else
            EXPECT_EQ(sheet.uv[i].x, static_cast<double>(static_cast<float>(before[i].x)));
    }
}

TEST(FloatLayout, TooManyNeedlesForFloatsAreCounted)
{
    // All vertices on one float, whatever is done.
    std::vector<Vec2> uv = {{1e10, 0.0}, {1e10 + 1.0, 0.0}, {1e10, 1e-30}};
    const std::vector<Triangle> triangles = {{0, 1, 2}};
    const std::vector<std::uint8_t> held(3, HoldU);
    EXPECT_EQ(roundToFloats(triangles, uv, held).flipsLeft, 1);
}

TEST(FloatLayout, ASlitStaysOpen)
{
    // From the middle of the left side to the centre, its lips `gap` apart.
    constexpr int cells = 8;
    constexpr double gap = 1e-12;
    IslandMesh sheet = surfaces::sheet(cells, cells);
    std::vector<Vec2> uv;
    uv.reserve(sheet.positions.size());
    for (const Vec3& p : sheet.positions)
        uv.push_back({0.1 + p.x / 7.0, 0.1 + p.y / 7.0});
    const int lowerLip = cells / 2 * (cells + 1);
    const int upperLip = sheet.vertexCount();
    for (int v = lowerLip; v < lowerLip + cells / 2; ++v)
        uv.push_back(uv[static_cast<std::size_t>(v)] + Vec2{0.0, gap});
    for (Triangle& t : sheet.triangles)
        if (*std::max_element(t.begin(), t.end()) > lowerLip + cells)
            for (int& v : t)
                if (v >= lowerLip && v < lowerLip + cells / 2)
                    v += upperLip - lowerLip;
    ASSERT_EQ(layout::countCrossings(sheet.triangles, uv), 0);

    const std::vector<Vec2> before = uv;
    const FloatRounding rounding = roundToFloats(sheet.triangles, uv);
    EXPECT_EQ(rounding.touchesLeft, 0);
    EXPECT_GT(rounding.moved, 0);
    EXPECT_EQ(layout::countFlips(sheet.triangles, uv), 0);
    EXPECT_EQ(layout::countCrossings(sheet.triangles, uv), 0);
    EXPECT_TRUE(areFloats(uv));
    EXPECT_LT(largestMove(uv, before), 1e-6);
}

TEST(FloatLayout, ABorderThatCrossedBeforeMayGoOnToDoSo)
{
    std::vector<Vec2> uv = {{0, 0}, {1, 0}, {0, 1}, {0.1, 0.1}, {1.1, 0.1}, {0.1, 1.1}};
    const std::vector<Triangle> triangles = {{0, 1, 2}, {3, 4, 5}};
    const FloatRounding rounding = roundToFloats(triangles, uv);
    EXPECT_EQ(rounding.moved, 0);
    EXPECT_EQ(rounding.touchesLeft, 0);
}

} // namespace

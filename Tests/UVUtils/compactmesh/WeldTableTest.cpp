#include "UVUtils/compactmesh/WeldTable.h"

#include "UVUtils/RandomShells.h"
#include "UVUtils/model/PositionOrder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <map>

namespace
{

/// How keys lie to each other.
struct Spread
{
    const char* name;
    unsigned count;      ///< of vertices
    unsigned places;     ///< different coordinates far apart
    unsigned steps;      ///< different coordinates half a tolerance apart around each
    unsigned oneBlurred; ///< one in so many coordinates is off its place
    unsigned oneBad;     ///< one in so many is no number, or infinite
};

const std::array<Spread, 6> spreads{{
    {"equal keys", 60, 3, 1, 1, 1000},
    {"few keys near each other", 40, 6, 3, 20, 1000},
    {"many keys near each other", 80, 2, 5, 3, 1000},
    {"all keys near each other", 300, 1, 7, 1, 1000},
    {"a few bad numbers", 60, 2, 3, 8, 12},
    {"more near keys than are tried pair by pair", 900, 2, 12, 1, 1000},
}};

float coordinate(Random& random, const Spread& spread)
{
    if (random.oneIn(spread.oneBad))
        return random.oneIn(2)
                   ? std::numeric_limits<float>::quiet_NaN()
                   : (random.oneIn(2) ? 1.F : -1.F) * std::numeric_limits<float>::infinity();
    const float place = 0.25F * static_cast<float>(random.below(spread.places));
    const unsigned step = random.oneIn(spread.oneBlurred) ? random.below(spread.steps) : 0;
    return place + 0.5F * weldTolerance * static_cast<float>(step);
}

ShellArrays randomKeys(Random& random, const Spread& spread)
{
    ShellArrays shell;
    for (unsigned i = 0; i < spread.count; ++i) {
        const auto next = [&] { return coordinate(random, spread); };
        const float x = next();
        const float y = next();
        const float z = next();
        shell.positions.emplace_back(x, y, z);
        const float u = next();
        shell.uvs.emplace_back(u, next());
    }
    return shell;
}

RC_GTEST_PROP(WeldTable, AnswersAsATolerantMapDoes, ())
{
    Random random(*rc::gen::arbitrary<std::uint32_t>());
    for (const Spread& spread : spreads) {
        const ShellArrays shell = randomKeys(random, spread);
        WeldTable table(shell, orderByPosition(shell.positions));
        std::map<WeldKey, unsigned, WeldKeyLess> map;
        for (unsigned question = 0; question < 2 * spread.count; ++question) {
            const unsigned vertex = random.below(spread.count);
            const auto [entry, isNew] =
                map.try_emplace(shell.keyOf(vertex), static_cast<unsigned>(map.size()));
            if (table.weldId(vertex) != entry->second)
                RC_FAIL(spread.name);
            if (isNew)
                RC_ASSERT(table.firstVertexOf(entry->second) == vertex);
        }
    }
}

TEST(WeldTable, NeedsTheMapOnlyWhereAKeyStandsBetweenNearOnes)
{
    constexpr float step = weldTolerance / 2;
    const auto dependsOnQuestions = [](const std::vector<osg::Pnt3f>& positions,
                                       std::vector<osg::Vec2f> uvs = {}) {
        uvs.resize(positions.size());
        const ShellArrays shell{positions, uvs, {}, {}};
        return WeldTable(shell, orderByPosition(shell.positions)).dependsOnQuestions();
    };
    const osg::Pnt3f a(0.5F, 0, 0);
    const osg::Pnt3f nearA(0.5F + 2 * step, 0, 0);
    EXPECT_FALSE(dependsOnQuestions({a, nearA, a, osg::Pnt3f(0.7F, 0, 0)}));
    EXPECT_TRUE(dependsOnQuestions({a, nearA, osg::Pnt3f(0.5F + step, 1, 0)})) << "between in x";
    EXPECT_TRUE(dependsOnQuestions({a, nearA, osg::Pnt3f(0.5F + 4 * step, 0, 0)})) << "a chain";
    const osg::Pnt3f middle(0.5F + step, 0, 0);
    EXPECT_FALSE(dependsOnQuestions({a, middle, nearA}));
    EXPECT_TRUE(dependsOnQuestions({a, middle, nearA},
                                   {osg::Vec2f(3 * step, 0), osg::Vec2f(1.5F * step, 0)}))
        << "UVs in a chain that runs against the positions";
}

} // namespace

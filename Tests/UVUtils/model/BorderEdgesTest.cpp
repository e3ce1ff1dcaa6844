#include "UVUtils/model/BorderEdges.h"

#include "UVUtils/Meshes.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>

namespace
{

RC_GTEST_PROP(BorderEdges, AgreeWithAPlainCount, (bool far))
{
    const auto triangles = *rc::gen::container<Ids>(rc::gen::map(
        rc::gen::inRange(0U, 12U), [far](unsigned id) { return far ? id * 300'000'001U : id; }));
    std::map<Edge, int> use;
    for (std::size_t i = 0; i + 3 <= triangles.size(); i += 3)
        for (unsigned k = 0; k < 3; ++k)
            ++use[{triangles[i + k], triangles[i + (k + 1) % 3]}];
    FlatEdgeList expected;
    for (const auto& [edge, count] : use)
        if (count == 1)
            expected.insert(expected.end(), {edge.first, edge.second});
    RC_ASSERT(borderEdges(std::span<const std::uint32_t>(triangles)) == expected);
}

TEST(BorderEdges, AreFoundInIndicesOf16And32Bits)
{
    const FlatEdgeList borders{0, 1, 0, 3, 1, 2, 2, 3};
    const osg::RefPtr<osg::GeoIndices> wide(tiny::indices({0, 1, 2, 0, 2, 3}));
    const osg::RefPtr<osg::GeoIndices> narrow{osg::GeoIndicesPtr(osg::GeoIndicesUI16::create())};
    narrow->setValues(Ids{0, 1, 2, 0, 2, 3});
    EXPECT_EQ(borderEdges(wide.get()), borders);
    EXPECT_EQ(borderEdges(narrow.get()), borders);
    EXPECT_TRUE(borderEdges(osg::GeoIndicesPtr()).empty());
}

} // namespace

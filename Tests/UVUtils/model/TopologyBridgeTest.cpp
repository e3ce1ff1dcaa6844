#include "UVUtils/model/kyTopologyBridge.h"

#include "UVUtils/Meshes.h"
#include "UVUtils/model/kyUVUtils.h"

#include <gtest/gtest.h>

/// The private operations of the facade that serve undo records.
struct kyUVUtilsTestAccess
{
    static void createChildData(kyTopologyBridge* bridge, const osg::NodePtr& node)
    {
        kyUVUtils::createChildData(bridge, osg::dcast<osg::Geometry>(node->getCore()), node);
    }
    static std::unique_ptr<TopologyOpOutData>
    getChildData(kyTopologyBridge* bridge, const osg::NodePtr& node, const osg::NodePtr& child)
    {
        return kyUVUtils::getChildData(bridge, osg::dcast<osg::Geometry>(node->getCore()), node,
                                       child);
    }
};

namespace
{

using Access = kyUVUtilsTestAccess;

TEST(TopologyBridge, StoresBothWaysOfAShuffle)
{
    kyTopologyBridge bridge;
    TopologyOpOutData out(bridge.getImpl());
    out.storeShuffle({1, 0, 1}, {3, 4, 5}, 3, 6);
    EXPECT_EQ(*out.nextShuffle, (Ids{0, 1, 2, 1, 0, 1}));
    EXPECT_EQ(*out.prevShuffle, (Ids{4, 5, 2})) << "the last copy stands for the vertex";

    out.storeShuffle({}, {}, 2, 3);
    EXPECT_EQ(*out.nextShuffle, (Ids{0, 1, 2}));
    EXPECT_EQ(*out.prevShuffle, (Ids{0, 1}));
}

TEST(TopologyBridge, HasItsBodyAtTheAddressOfTheWayForward)
{
    kyTopologyBridge bridge;
    EXPECT_EQ(bridge.getNext(), bridge.getImpl());
    EXPECT_EQ(bridge.getPrev(), &bridge.getImpl()->prev);
}

TEST(TopologyBridge, ItsViewsWriteToTheirLevelAndShareTheFaceMappings)
{
    kyTopologyBridge bridge;
    bridge.getImpl()->patchResize(2);
    TopologyOpOutData top(bridge.getImpl());
    TopologyOpOutData child(bridge.getImpl(), 1);
    top.nextShuffle->assign(1, 10);
    child.nextShuffle->assign(1, 11);
    child.prevShuffle->assign(1, 12);
    child.nextUVConstraints->assign(1, {{0, 1}, {}});
    EXPECT_EQ(child.nextFaceMapping, top.nextFaceMapping);
    EXPECT_EQ(child.prevFaceMapping, top.prevFaceMapping);

    const kyTopologyData& next = bridge.getImpl()->next;
    const kyTopologyData& prev = bridge.getImpl()->prev;
    EXPECT_EQ(next.shuffle, Ids{10});
    EXPECT_EQ(next.childShuffles, (std::vector<Ids>{{}, {11}}));
    EXPECT_EQ(prev.childShuffles, (std::vector<Ids>{{}, {12}}));
    EXPECT_EQ(next.childUVConstraints[1][0].edgesU, (Ids{0, 1}));
}

TEST(TopologyBridge, CopiesHoldTheirOwnReferencesAndClearLetsGo)
{
    const osg::RefPtr<osg::GeoIndices> indices(tiny::indices({0, 1, 2}));
    kyTopologyBridge bridge;
    bridge.getImpl()->patchResize(1);
    bridge.getImpl()->next.indices = indices;
    bridge.getImpl()->prev.childIndices[0] = indices;
    EXPECT_EQ(indices->getRefCount(), 3);
    {
        kyTopologyBridge copy(bridge);
        copy.getImpl()->patchResize(2);
        kyTopologyBridge assigned;
        assigned = bridge;
        EXPECT_EQ(indices->getRefCount(), 7);
    }
    EXPECT_EQ(indices->getRefCount(), 3);

    bridge.getImpl()->clear();
    EXPECT_EQ(indices->getRefCount(), 1);
    EXPECT_TRUE(bridge.getImpl()->prev.childIndices.empty());
    EXPECT_TRUE(bridge.getImpl()->next.childShuffles.empty());
    EXPECT_TRUE(bridge.getImpl()->next.childUVConstraints.empty());
}

TEST(TopologyBridge, DealsChildRecordsByTheNumberAmongAllChildren)
{
    const osg::RefPtr<osg::Node> shell(shellOf({quad(), quad(), quad()}));
    shell->getChild(0)->setTravMask(0);
    const osg::RefPtr<osg::Node> stranger(nodeOf(quad()));
    kyTopologyBridge bridge;
    Access::createChildData(&bridge, shell);
    EXPECT_EQ(bridge.getImpl()->next.childShuffles.size(), 3U) << "hidden ones count";
    const auto data = Access::getChildData(&bridge, shell, shell->getChild(2));
    ASSERT_TRUE(data);
    EXPECT_EQ(data->nextShuffle, &bridge.getImpl()->next.childShuffles[2]);
    EXPECT_FALSE(Access::getChildData(&bridge, shell, stranger));

    Access::createChildData(&bridge, stranger);
    EXPECT_EQ(bridge.getImpl()->prev.childIndices.size(), 1U);
    EXPECT_EQ(Access::getChildData(&bridge, stranger, stranger)->prevIndices,
              &bridge.getImpl()->prev.childIndices[0]);

    Access::createChildData(nullptr, shell);
    EXPECT_FALSE(Access::getChildData(nullptr, shell, shell->getChild(0)));
}

} // namespace

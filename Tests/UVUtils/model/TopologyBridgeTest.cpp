#include "UVUtils/model/kyTopologyBridge.h"

#include "UVUtils/Meshes.h"

#include <gtest/gtest.h>

/// The private operations of the facade that serve undo records.
struct kyUVUtilsTestAccess
{
    static void createChildData(kyTopologyBridge* bridge, const osg::NodePtr& node)
    {
        kyUVUtils::createChildData(bridge, coreOf(node), node);
    }
    static std::unique_ptr<TopologyOpOutData>
    getChildData(kyTopologyBridge* bridge, const osg::NodePtr& node, const osg::NodePtr& child)
    {
        return kyUVUtils::getChildData(bridge, coreOf(node), node, child);
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
    EXPECT_EQ(data->nextUVConstraints, &bridge.getImpl()->next.childUVConstraints[2]);
    EXPECT_EQ(data->prevUVConstraints, &bridge.getImpl()->prev.childUVConstraints[2]);
    EXPECT_EQ(data->nextFaceMapping, &bridge.getImpl()->next.faceMapping) << "of all children";
    EXPECT_EQ(bridge.getNext(), bridge.getImpl()) << "the body begins with the way forward";
    EXPECT_FALSE(Access::getChildData(&bridge, shell, stranger));

    Access::createChildData(&bridge, stranger);
    EXPECT_EQ(bridge.getImpl()->prev.childIndices.size(), 1U);
    EXPECT_EQ(Access::getChildData(&bridge, stranger, stranger)->prevIndices,
              &bridge.getImpl()->prev.childIndices[0]);

    Access::createChildData(nullptr, shell);
    EXPECT_FALSE(Access::getChildData(nullptr, shell, shell->getChild(0)));
}

} // namespace

#include "OpenSGExt/NodeUtils.h"

#include "OpenSG/RefPtr.h"

#include <gtest/gtest.h>

namespace
{

TEST(NodeUtils, ANodeKeepsItsNameUntilItGetsAnother)
{
    const osg::RefPtr<osg::Node> node(osg::Node::create());
    EXPECT_EQ(NodeUtils::getName(node), nullptr);
    NodeUtils::setName(node, "first");
    NodeUtils::setName(node, "second");
    EXPECT_STREQ(NodeUtils::getName(node), "second");
    NodeUtils::setName(node, "");
    EXPECT_EQ(NodeUtils::getName(node), nullptr);
}

TEST(NodeUtils, ACopyIsRenamedAloneAndNoNodeHasAName)
{
    const osg::RefPtr<osg::Node> node(osg::Node::create());
    NodeUtils::setName(node, "model");
    const osg::RefPtr<osg::Node> copy(node->clone());
    NodeUtils::setName(copy, "copy");
    EXPECT_STREQ(NodeUtils::getName(node), "model");
    EXPECT_STREQ(NodeUtils::getName(copy), "copy");
    NodeUtils::setName(osg::NullFC, "lost");
    EXPECT_EQ(NodeUtils::getName(osg::NullFC), nullptr);
}

} // namespace

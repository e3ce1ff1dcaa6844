#include "OpenSGUtils/kyNodeUtils.h"

#include "OpenSG/Group.h"
#include "OpenSG/SurfaceBase.h"
#include "OpenSG/TinyGeometry.h"

#include <gtest/gtest.h>

namespace
{

osg::NodePtr nodeOf(const osg::NodeCorePtr& core, const std::vector<osg::NodePtr>& children = {})
{
    const auto node = osg::Node::create();
    node->setCore(core);
    for (const osg::NodePtr& child : children)
        node->addChild(child);
    return node;
}

TEST(VisibleGeometryNodes, AreShownGeometriesAndSurfacesBelowTheGivenNodes)
{
    const auto shellCore = osg::Geometry::create();
    shellCore->setGeometryType(osg::Geometry::ShellType);
    const auto sideB = osg::SurfaceBase::create();
    sideB->setSide(osg::SurfaceBase::SideB);
    const osg::NodePtr front = nodeOf(tiny::quad().get());
    const osg::NodePtr back = nodeOf(sideB);
    const osg::NodePtr hidden = nodeOf(tiny::quad().get());
    hidden->setTravMask(0);
    const osg::NodePtr plain = nodeOf(tiny::quad().get());
    const osg::NodePtr belowHidden = nodeOf(osg::Group::create(), {nodeOf(tiny::quad().get())});
    belowHidden->setTravMask(0);
    const osg::RefPtr<osg::Node> root(nodeOf(
        osg::Group::create(), {nodeOf(shellCore, {front, hidden, back}), plain, belowHidden}));

    const auto visible = [&](const std::vector<osg::NodePtr>& nodes, unsigned int sides) {
        std::vector<osg::NodePtr> out;
        kyNodeUtils::getVisibleGeometryNodes(nodes, out, sides);
        return out;
    };
    using Nodes = std::vector<osg::NodePtr>;
    EXPECT_EQ(visible({root}, 3), (Nodes{front, back, plain}));
    EXPECT_EQ(visible({root}, osg::SurfaceBase::SideB), Nodes{back});
    EXPECT_EQ(visible({plain, front, osg::NullFC}, 3), (Nodes{plain, front}));
    EXPECT_EQ(visible({hidden}, 3), Nodes());
}

} // namespace

#include "OpenSG/TinyGeometry.h"
#include "OpenSGAnim/kyAnimManager.h"
#include "OpenSGUtils/kyNodePermission.h"

#include <gtest/gtest.h>

namespace
{

TEST(NodeMarks, StandOnOneNodeAndCopiesGoTheirOwnWay)
{
    constexpr unsigned int editing = kyScenegraphTypes::EditTextureCoordinates;
    kyAnimManager& anim = *kyAnimManager::the();
    const osg::RefPtr<osg::Node> node(osg::Node::create());
    tiny::NoticeJournal journal;
    journal.watch(node);
    kyNodePermission::deny(node, editing);
    kyNodePermission::deny(node, 3);
    kyNodePermission::deny(node, editing);
    anim.setVertexAnimation(node, true);
    EXPECT_EQ(journal.notices.size(), 3U) << "one for each change";

    const osg::RefPtr<osg::Node> copy(node->clone());
    kyNodePermission::allow(copy, editing);
    anim.setVertexAnimation(copy, false);
    EXPECT_TRUE(kyNodePermission::allows(copy, editing) && !kyNodePermission::allows(copy, 3));
    EXPECT_FALSE(kyNodePermission::allows(node, editing));
    EXPECT_TRUE(anim.hasVertexAnimation(node) && !anim.hasVertexAnimation(copy));
    EXPECT_FALSE(kyNodePermission::allows(osg::NullFC, editing));
}

} // namespace

#include "OpenSG/FieldContainerFactory.h"
#include "OpenSGUtils/kyNodeUtils.h"

#include <algorithm>
#include <iterator>

namespace kyNodeUtils
{

namespace
{

unsigned int rootId = 0;

bool isAtOrBelow(const osg::NodePtr& root, const osg::NodePtr& node)
{
    for (osg::NodePtr up = node; up; up = up->getParent())
        if (up == root)
            return true;
    return false;
}

} // namespace

void setScenegraphRoot(const osg::NodePtr& root)
{
    rootId = root ? root->getId() : 0;
}

osg::NodePtr getScenegraphRoot()
{
    return osg::dcast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(rootId));
}

void getInstancesInScenegraph(const osg::NodePtr& node, std::vector<osg::NodePtr>& out)
{
    if (!node || !node->getCore())
        return;
    const auto& instances = node->getCore()->getParents();
    const osg::NodePtr root = getScenegraphRoot();
    std::copy_if(
        instances.begin(), instances.end(), std::back_inserter(out),
        [&root](const osg::NodePtr& instance) { return !root || isAtOrBelow(root, instance); });
}

} // namespace kyNodeUtils

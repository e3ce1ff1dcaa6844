#include "OpenSGUtils/kyNodeUtils.h"

#include "OpenSG/CoreAs.h"
#include "OpenSG/FieldContainerFactory.h"
#include "OpenSG/Traverse.h"
#include "OpenSGExt/kyShellUtils.h"

namespace kyNodeUtils
{

bool isShellGeometry(const osg::GeometryPtr& geometry)
{
    return kyShellUtils::isShell(geometry);
}

bool isShellGeometry(const osg::NodePtr& node)
{
    return kyShellUtils::isShell(osg::coreAs<osg::Geometry>(node));
}

unsigned int getNodeId(const osg::NodePtr& node)
{
    return node ? node->getId() : 0;
}

osg::NodePtr getNodeFromId(unsigned int id)
{
    return osg::dcast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(id));
}

void getSubTreeNodes(const osg::NodePtr& node, std::vector<osg::NodePtr>& out)
{
    osg::traverse(node, [&](osg::NodePtr& visited) -> unsigned int {
        if (visited != node)
            out.push_back(visited);
        return osg::TraverseResult::Continue;
    });
}

void getVisibleGeometryNodes(const std::vector<osg::NodePtr>& nodes, std::vector<osg::NodePtr>& out,
                             unsigned int shownSides)
{
    const auto collect = [&](osg::NodePtr& node) -> unsigned int {
        if (node->getTravMask() == 0)
            return osg::TraverseResult::Skip;
        const auto geometry = osg::coreAs<osg::Geometry>(node);
        if (!kyShellUtils::isShell(geometry) &&
            kyShellUtils::isVisibleShellComponent(node, geometry, shownSides))
            out.push_back(node);
        return osg::TraverseResult::Continue;
    };
    for (const osg::NodePtr& node : nodes)
        osg::traverse(node, collect);
}

} // namespace kyNodeUtils

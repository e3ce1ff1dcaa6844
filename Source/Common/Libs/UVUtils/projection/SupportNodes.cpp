#include "UVUtils/projection/SupportNodes.h"

#include "OpenSG/ChangeNotice.h"
#include "OpenSG/CoreAs.h"
#include "OpenSG/SimpleGeometry.h"
#include "OpenSG/Transform3D.h"
#include "OpenSGExt/NodeUtils.h"

#include <vector>

namespace SupportNodes
{

osg::NodePtr makeTransform(const std::string& name, std::initializer_list<osg::NodePtr> children)
{
    return makeNode(osg::Transform3D::create(), name, children);
}

osg::NodePtr makeNode(const osg::NodeCorePtr& core, const std::string& name,
                      std::initializer_list<osg::NodePtr> children)
{
    const auto node = osg::Node::create();
    node->setCore(core);
    NodeUtils::setName(node, name);
    for (const osg::NodePtr& child : children)
        node->addChild(child);
    return finish(node);
}

osg::NodePtr finish(const osg::NodePtr& node)
{
    osg::notifyChanged(node->getCore(), osg::FieldMask::all());
    osg::notifyChanged(node, osg::FieldMask::all());
    return node;
}

osg::NodePtr finishShape(const osg::NodePtr& shape, const osg::MaterialPtr& material)
{
    osg::coreAs<osg::Geometry>(shape)->setMaterial(material);
    return finish(shape);
}

osg::NodePtr makePlane(float width, float height, const osg::MaterialPtr& material)
{
    return finishShape(osg::makePlane(width, height, 1, 1, osg::NormalAlongZ), material);
}

osg::NodePtr makeFrame(std::span<const osg::Pnt3f> more, const osg::MaterialPtr& material)
{
    std::vector<osg::Pnt3f> points{osg::Pnt3f(-1, -1, 0), osg::Pnt3f(1, -1, 0), osg::Pnt3f(1, 1, 0),
                                   osg::Pnt3f(-1, 1, 0)};
    std::vector<unsigned int> ends{0, 1, 1, 2, 2, 3, 3, 0};
    for (const osg::Pnt3f& end : more) {
        ends.push_back(static_cast<unsigned int>(points.size()));
        points.push_back(end);
    }
    const auto frame = osg::Node::create();
    frame->setCore(osg::makeLines(points, ends));
    return finishShape(frame, material);
}

void setActive(const osg::NodePtr& root, bool isActive)
{
    if (!root)
        return;
    root->setTravMask(isActive ? ~0U : 0U);
    osg::notifyChanged(root, osg::Node::TravMaskFieldMask);
}

} // namespace SupportNodes

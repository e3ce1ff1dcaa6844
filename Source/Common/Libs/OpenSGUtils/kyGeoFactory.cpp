#include "OpenSGUtils/kyGeoFactory.h"

#include "OpenSG/SimpleGeometry.h"
#include "OpenSGExt/NodeUtils.h"

#include <array>

namespace kyGeoFactory
{

osg::NodePtr makeLine(const osg::Pnt3f& from, const osg::Pnt3f& to, const std::string& name,
                      const osg::MaterialPtr& material)
{
    const osg::GeometryPtr line = osg::makeLines(std::array{from, to}, std::array{0U, 1U});
    line->setMaterial(material);
    const auto node = osg::Node::create();
    node->setCore(line);
    NodeUtils::setName(node, name);
    return node;
}

} // namespace kyGeoFactory

#pragma once

#include "OpenSG/Color.h"
#include "OpenSG/Material.h"
#include "OpenSG/Node.h"
#include "OpenSG/Vector.h"

#include <initializer_list>
#include <span>
#include <string>

/// The nodes of what shows a projection. What is made here is finished.
namespace SupportNodes
{

/// The colour of lines at the start.
inline constexpr osg::Color3f lineColor{0.953F, 0.525F, 0.184F};

/// A node with a new osg::Transform3D core and children in that order.
///
/// name  empty for none
osg::NodePtr makeTransform(const std::string& name, std::initializer_list<osg::NodePtr> children);
/// The same with a core that is there already.
osg::NodePtr makeNode(const osg::NodeCorePtr& core, const std::string& name,
                      std::initializer_list<osg::NodePtr> children);

/// Reports the core of a node, then the node, as changed. Returns the node.
osg::NodePtr finish(const osg::NodePtr& node);
/// The same, after giving the geometry of the node a material.
osg::NodePtr finishShape(const osg::NodePtr& shape, const osg::MaterialPtr& material);

/// A rectangle in the x, y plane, centred on the origin.
osg::NodePtr makePlane(float width, float height, const osg::MaterialPtr& material);

/// The lines around the square from -1 to 1 in x and y.
///
/// more  the ends of further lines, two each
osg::NodePtr makeFrame(std::span<const osg::Pnt3f> more, const osg::MaterialPtr& material);

/// Shows a node and what is below it, or hides it. Does nothing for null.
void setActive(const osg::NodePtr& root, bool isActive);

} // namespace SupportNodes

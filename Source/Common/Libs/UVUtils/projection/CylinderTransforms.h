#pragma once

#include "OpenSG/Node.h"

class kyUVBaseProjectionSettings;

/// How the two transform nodes of a cylindrical projection are written. Each field that is set is
/// reported; a node that is null or has no osg::Transform3D core is passed over.
namespace CylinderTransforms
{

/// The 3D node: the cylinder's place, turn and size in the world.
void placeBody(const osg::NodePtr& node, const kyUVBaseProjectionSettings& settings);

/// The 2D node: the image as it is, turned by so many degrees about its middle.
void placeImage(const osg::NodePtr& node, double degrees);
/// The same, where no more than the turn may be out of date.
void turnImage(const osg::NodePtr& node, double degrees);

} // namespace CylinderTransforms

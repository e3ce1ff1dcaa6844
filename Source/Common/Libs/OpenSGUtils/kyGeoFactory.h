#pragma once

#include "OpenSG/Material.h"
#include "OpenSG/Node.h"
#include "OpenSG/Vector.h"

#include <string>

/// Makes nodes with shapes.
namespace kyGeoFactory
{

/// A node with a name, whose core is the straight line between two points, in a material (which may
/// be null). No notice is sent.
osg::NodePtr makeLine(const osg::Pnt3f& from, const osg::Pnt3f& to, const std::string& name,
                      const osg::MaterialPtr& material);

} // namespace kyGeoFactory

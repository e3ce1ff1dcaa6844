#pragma once

#include "OpenSG/Node.h"

#include <string>

/// Names of nodes.
namespace NodeUtils
{

/// Null for a null node and for one without a name. Good until the name changes or the node goes.
const char* getName(const osg::NodePtr& node);

/// An empty name takes the name away. Does nothing for a null node; sends no notice.
void setName(const osg::NodePtr& node, const std::string& name);

} // namespace NodeUtils

#pragma once

#include "OpenSG/Node.h"
#include "OpenSGUtils/kyScenegraphTypes.h"

/// What may be done to a node: everything, until an action is denied.
///
/// A denial stands on the node alone, neither on those below it nor on others with the same core.
/// A copy of the node takes it over and is on its own from then on.
namespace kyNodePermission
{

/// False for a null node: there is nothing to do it to.
bool allows(const osg::NodePtr& node, unsigned int action);

/// Take back and give the permission. Only a change is reported, as one of the node's attachments.
/// Do nothing for a null node.
void deny(const osg::NodePtr& node, unsigned int action);
void allow(const osg::NodePtr& node, unsigned int action);

} // namespace kyNodePermission

#pragma once

#include "OpenSG/Node.h"

#include <string>

namespace osg
{

/// A copy of a node with everything below it: new nodes, cores, properties, attachments and
/// whatever else their fields hold, for any class of containers. What is held in several places of
/// the tree, as a core by several nodes, is one container there too.
///
/// sharedTypes  names of classes, with commas between them and blanks around them as one likes:
///              containers of these classes and of classes derived from them are not copied but
///              held by both trees. Nodes are always copied, since a node hangs in one place.
///
/// Callbacks, temporary lists and the place under a parent are not copied. The new root has count 0
/// and no parent; NullFC for null. The source tree is as it was afterwards, and nothing is told.
///
/// Linear in what there is, without recursion, so the tree may be of any depth.
NodePtr deepCloneTree(const NodePtr& root, const std::string& sharedTypes = {});

} // namespace osg

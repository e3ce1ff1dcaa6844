#pragma once

#include "OpenSG/Node.h"

namespace osg
{

/// The core of a node as one of class Core: NullFC for a null node, and for one without a core or
/// with one of another class.
template <class Core>
Ptr<Core> coreAs(const NodePtr& node)
{
    return node ? dcast<Core>(node->getCore()) : Ptr<Core>();
}

} // namespace osg

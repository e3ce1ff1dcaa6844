#pragma once

#include "OpenSG/Node.h"

#include <functional>

namespace osg
{

/// What a visitor answers, and what a walk ends with.
struct TraverseResult
{
    enum Code : unsigned
    {
        Continue = 0,
        Skip = 1, ///< pass over the children of this node
        Quit = 2  ///< end the whole walk
    };
};

/// Visits a node and everything below it, parents before children, children in their order.
/// Returns Quit if the visitor ended the walk, else Continue. Does nothing for null.
///
/// The visitor may change what is below the node it is called with, and must leave the rest of the
/// tree as it is.
unsigned traverse(const NodePtr& root, const std::function<unsigned(NodePtr&)>& visitor);

/// The same with a visit on the way back as well: `leave` is called for each node that was entered
/// once everything below it is done, also where its children were passed over. It may end the walk
/// too. Nodes that a walk which ends stands in are not left.
unsigned traverse(const NodePtr& root, const std::function<unsigned(NodePtr&)>& enter,
                  const std::function<unsigned(NodePtr&)>& leave);

} // namespace osg

#pragma once

#include "OpenSG/Node.h"

/// Knows which nodes are animated.
class kyAnimManager
{
public:
    static kyAnimManager* the();

    kyAnimManager(const kyAnimManager&) = delete;
    kyAnimManager& operator=(const kyAnimManager&) = delete;

    /// Do the vertices of this node move over time, so that their number and order are bound to
    /// its frames? Asks about that node alone, not about those below it. False for null.
    bool hasVertexAnimation(const osg::NodePtr& node) const;

    /// Marks a node, or takes the mark away. Only a change is reported, as one of the node's
    /// attachments. Does nothing for null.
    void setVertexAnimation(const osg::NodePtr& node, bool isAnimated);

private:
    kyAnimManager() = default;
};

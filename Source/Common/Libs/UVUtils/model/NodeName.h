#pragma once

#include "OpenSGExt/NodeUtils.h"

/// What a node is called in messages: its name, or a word for one that has none.
inline const char* nameForMessages(const osg::NodePtr& node)
{
    const char* name = NodeUtils::getName(node);
    return name ? name : "<noname>";
}

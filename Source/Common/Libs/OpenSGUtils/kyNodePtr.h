#pragma once

#include "OpenSG/Node.h"

/// A node as the application's lists hold it. Like osg::NodePtr it counts no reference.
class kyNodePtr
{
public:
    kyNodePtr() = default;
    kyNodePtr(const osg::NodePtr& node) : node_(node) {}

    const osg::NodePtr& get() const { return node_; }
    osg::Node* operator->() const { return node_.get(); }
    explicit operator bool() const { return bool(node_); }
    friend bool operator==(const kyNodePtr&, const kyNodePtr&) = default;

private:
    osg::NodePtr node_;
};

#pragma once

#include "OpenSG/CoreAs.h"
#include "OpenSG/Traverse.h"

#include <memory>
#include <string>

namespace osg
{

/// Something that is done to a node and everything below it, in one walk.
class GraphOp
{
public:
    explicit GraphOp(const char* name);

    /// A new operation of the same class, with its start values and its default name.
    [[nodiscard]] virtual std::unique_ptr<GraphOp> create() const = 0;
    virtual ~GraphOp();

    /// Options as a text, in the form that usage describes.
    virtual void setParams(std::string params) = 0;
    /// The options that setParams knows, for a user; empty if there are none.
    [[nodiscard]] virtual std::string usage() const = 0;

    /// Walks over a node and everything below it, as osg::traverse does. False if the walk was
    /// ended before it was through. Does nothing for null.
    virtual bool traverse(const NodePtr& root);

    // What happens on the way down and on the way back; both answer with a code of TraverseResult.

    virtual unsigned traverseEnter(NodePtr& node) = 0;
    virtual unsigned traverseLeave(NodePtr& node) = 0;

    [[nodiscard]] const std::string& getName() const { return _name; }

protected:
    GraphOp(const GraphOp&) = default;
    GraphOp& operator=(const GraphOp&) = default;

private:
    std::string _name;
};

/// A graph operation on the nodes whose core is of one class. All others are passed over, and the
/// walk always goes on.
template <class Core>
class SingleTypeGraphOp : public GraphOp
{
public:
    using GraphOp::GraphOp;

    unsigned traverseEnter(NodePtr& node) override
    {
        if (coreAs<Core>(node))
            travNodeEnter(node);
        return TraverseResult::Continue;
    }
    unsigned traverseLeave(NodePtr& node) override
    {
        if (coreAs<Core>(node))
            travNodeLeave(node);
        return TraverseResult::Continue;
    }

    // Called before and after all that is below the node. The walk does not look at the answer.

    virtual bool travNodeEnter(const NodePtr& node) = 0;
    virtual bool travNodeLeave(const NodePtr& node) = 0;
};

} // namespace osg

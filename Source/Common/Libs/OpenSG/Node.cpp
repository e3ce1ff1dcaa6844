#include "OpenSG/Node.h"

#include "OpenSG/DropHolder.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace osg
{

namespace
{

/// Children of destroyed nodes that are yet to be released; null unless a tree is going.
thread_local std::vector<RefPtr<Node>>* waitingChildren = nullptr;

void releaseOneByOne(std::vector<RefPtr<Node>>& waiting)
{
    waitingChildren = &waiting;
    while (!waiting.empty()) {
        const RefPtr<Node> next = std::move(waiting.back());
        waiting.pop_back();
    } // which releases the next one; its own children join those that wait
    waitingChildren = nullptr;
}

} // namespace

FieldContainerType& Node::getClassType()
{
    static auto& type = *new FieldContainerType(
        "Node", &AttachmentContainer::getClassType(), &Node::createContainer,
        {holderField<&Node::_parent>("parent", "SFNodePtr", ParentFieldMask),
         containerField<&Node::_core>("core", "SFNodeCorePtr", CoreFieldMask, &Node::copyCore),
         containerField<&Node::_children>("children", "MFNodePtr", ChildrenFieldMask,
                                          &Node::copyChildren),
         valueField<&Node::_travMask>("travMask", "SFUInt32", TravMaskFieldMask)});
    return type;
}

Node::Node(const Node& other) : ConcreteContainer(other), _travMask(other._travMask)
{
    setCore(other._core);
}

Node::~Node()
{
    setCore(NullFC);
    for (const RefPtr<Node>& child : _children)
        child->_parent = NullFC;
    std::reverse(_children.begin(), _children.end()); // the last one goes first
    if (waitingChildren)
        std::move(_children.begin(), _children.end(), std::back_inserter(*waitingChildren));
    else
        releaseOneByOne(_children);
}

void Node::addChild(const NodePtr& child)
{
    const NodePtr self(this);
    if (child == NullFC || child == self || isBelow(child))
        return;
    const RefPtr<Node> added(child); // keeps it alive while it changes hands
    if (const NodePtr parent = child->_parent)
        parent->subChild(child);
    added->_parent = self;
    _children.push_back(added);
}

void Node::subChild(const NodePtr& child)
{
    const int at = findChild(child);
    if (at < 0)
        return;
    const RefPtr<Node> removed = std::move(_children[static_cast<std::size_t>(at)]);
    _children.erase(_children.begin() + at);
    removed->_parent = NullFC;
}

NodePtr Node::getChild(unsigned i) const
{
    return i < _children.size() ? _children[i].get() : NodePtr();
}

int Node::findChild(const NodePtr& child) const
{
    if (child == NullFC)
        return -1;
    const auto found = std::find(_children.begin(), _children.end(), child);
    return found == _children.end() ? -1 : static_cast<int>(found - _children.begin());
}

void Node::setCore(const NodeCorePtr& core)
{
    if (_core == core)
        return;
    const RefPtr<NodeCore> old = std::move(_core);
    if (old)
        dropHolder(old->_parents, NodePtr(this));
    _core = core;
    if (core)
        core->_parents.emplace_back(this);
}

TransformationMatrix<float> Node::getToWorld() const
{
    std::vector<const Node*> upward;
    for (const Node* node = this; node; node = node->_parent.get())
        upward.push_back(node);
    TransformationMatrix<float> toWorld;
    for (auto node = upward.rbegin(); node != upward.rend(); ++node)
        if ((*node)->_core)
            (*node)->_core->accumulateMatrix(toWorld);
    return toWorld;
}

void Node::copyCore(const FieldContainer& from, FieldContainer& copy,
                    const FieldDescription::Replacement& replacementOf)
{
    if (const NodeCorePtr core = static_cast<const Node&>(from).getCore())
        static_cast<Node&>(copy).setCore(dcast<NodeCore>(replacementOf(core)));
}

void Node::copyChildren(const FieldContainer& from, FieldContainer& copy,
                        const FieldDescription::Replacement& replacementOf)
{
    const auto& children = static_cast<const Node&>(from)._children;
    std::vector<NodePtr> copies(children.size());
    // Asked for from the last one on, since of copies the one made last is filled first: so the
    // children take their cores in their own order.
    std::transform(children.rbegin(), children.rend(), copies.rbegin(),
                   [&](const RefPtr<Node>& child) { return dcast<Node>(replacementOf(child)); });
    for (const NodePtr& child : copies)
        static_cast<Node&>(copy).addChild(child);
}

bool Node::isBelow(const NodePtr& other) const
{
    if (other->_children.empty()) // as good as always when a tree is built
        return false;
    for (NodePtr up = _parent; up; up = up->_parent)
        if (up == other)
            return true;
    return false;
}

} // namespace osg

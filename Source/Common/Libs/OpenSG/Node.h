#pragma once

#include "OpenSG/ConcreteContainer.h"
#include "OpenSG/NodeCore.h"

#include <vector>

namespace osg
{

/// A node of the scene graph, which is a tree: at most one parent, children in a fixed order, and
/// a core that says what the node is.
///
/// A node counts its children and its core. Nothing here sends a notice.
///
/// A tree goes from the top down, parents before children, without recursion, so that it may be of
/// any depth: the children of a node are released after the node itself is gone.
class Node : public ConcreteContainer<Node, AttachmentContainer>
{
public:
    static constexpr unsigned ParentFieldNumber = AttachmentContainer::NextFieldNumber;
    static constexpr unsigned CoreFieldNumber = ParentFieldNumber + 1;
    static constexpr unsigned ChildrenFieldNumber = ParentFieldNumber + 2;
    static constexpr unsigned TravMaskFieldNumber = ParentFieldNumber + 3;
    static constexpr unsigned NextFieldNumber = ParentFieldNumber + 4;
    static constexpr FieldMask ParentFieldMask = FieldMask::bit(ParentFieldNumber);
    static constexpr FieldMask CoreFieldMask = FieldMask::bit(CoreFieldNumber);
    static constexpr FieldMask ChildrenFieldMask = FieldMask::bit(ChildrenFieldNumber);
    static constexpr FieldMask TravMaskFieldMask = FieldMask::bit(TravMaskFieldNumber);

    static FieldContainerType& getClassType();

    /// Appends a child, which leaves its parent, this one included. Does nothing for null, for the
    /// node itself, and for one that this node stands below.
    void addChild(const NodePtr& child);
    /// Does nothing if that is no child of this node.
    void subChild(const NodePtr& child);
    [[nodiscard]] unsigned getNChildren() const { return static_cast<unsigned>(_children.size()); }
    /// NullFC beyond the end.
    [[nodiscard]] NodePtr getChild(unsigned i) const;
    /// The number of a child, -1 if it is none.
    [[nodiscard]] int findChild(const NodePtr& child) const;

    [[nodiscard]] NodePtr getParent() const { return _parent; }

    [[nodiscard]] NodeCorePtr getCore() const { return _core.get(); }
    void setCore(const NodeCorePtr& core);

    /// What the transform cores from the root down to this node, its own included, do together.
    [[nodiscard]] TransformationMatrix<float> getToWorld() const;

    /// Who may see the node and what is below; all bits at the start, 0 hides.
    [[nodiscard]] unsigned getTravMask() const { return _travMask; }
    void setTravMask(unsigned mask) { _travMask = mask; }

private:
    friend ConcreteContainer<Node, AttachmentContainer>;

    Node() = default;
    /// The copy has the core and the mask, no parent and no children.
    Node(const Node& other);
    ~Node() override;

    static void copyCore(const FieldContainer& from, FieldContainer& copy,
                         const FieldDescription::Replacement& replacementOf);
    static void copyChildren(const FieldContainer& from, FieldContainer& copy,
                             const FieldDescription::Replacement& replacementOf);
    [[nodiscard]] bool isBelow(const NodePtr& other) const;

    NodePtr _parent;
    RefPtr<NodeCore> _core;
    std::vector<RefPtr<Node>> _children;
    unsigned _travMask = ~0U;
};

} // namespace osg

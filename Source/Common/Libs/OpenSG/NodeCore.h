#pragma once

#include "OpenSG/AttachmentContainer.h"
#include "OpenSG/Matrix.h"

#include <vector>

namespace osg
{

class Node;
using NodePtr = Ptr<Node>;

/// What a node is: a group, a transform, a geometry. One core can serve several nodes.
class NodeCore : public AttachmentContainer
{
public:
    static constexpr unsigned ParentsFieldNumber = AttachmentContainer::NextFieldNumber;
    static constexpr unsigned NextFieldNumber = ParentsFieldNumber + 1;
    static constexpr FieldMask ParentsFieldMask = FieldMask::bit(ParentsFieldNumber);

    static FieldContainerType& getClassType();

    /// The nodes that have this core, in the order in which they took it.
    [[nodiscard]] const std::vector<NodePtr>& getParents() const { return _parents; }

    /// Multiplies what the core does to the space below its nodes onto the right of a matrix.
    virtual void accumulateMatrix(TransformationMatrix<float>& toWorld) const;

protected:
    NodeCore() = default;
    /// The copy belongs to no node.
    NodeCore(const NodeCore& other) : AttachmentContainer(other) {}
    ~NodeCore() override = default;

private:
    friend class Node;

    std::vector<NodePtr> _parents;
};

using NodeCorePtr = Ptr<NodeCore>;

} // namespace osg

#include "UVUtils/undo/kyUVConstraintsChangeUndoGuard.h"

#include "OpenSG/CoreAs.h"
#include "OpenSG/RefPtr.h"
#include "OpenSGUtils/kyNodeUtils.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/undo/kyUVConstraintsChangeCommand.h"

#include <memory>
#include <utility>

namespace
{

void addCommand(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                std::vector<Edge> prevEdges, std::vector<Edge> nextEdges,
                kyUVTypes::EdgeConstraint constraint)
{
    auto command = std::make_unique<kyUVConstraintsChangeCommand>(
        geometry, node, std::move(prevEdges), std::move(nextEdges), constraint, nullptr);
    kyUndoStack::get(0).add(command.release());
}

} // namespace

kyUVConstraintsChangeUndoGuard::kyUVConstraintsChangeUndoGuard(
    const kyUndoString& string, const std::vector<osg::NodePtr>& nodes)
    : UndoStep(string, false)
{
    for (const osg::NodePtr& node : nodes) {
        const auto geometry = osg::coreAs<osg::Geometry>(node);
        if (!geometry)
            continue;
        nodeIds_.push_back(kyNodeUtils::getNodeId(node));
        prevEdgesU_.push_back(
            kyUVUtils::getConstrainedEdges(geometry, node, kyUVTypes::Horizontal));
        prevEdgesV_.push_back(kyUVUtils::getConstrainedEdges(geometry, node, kyUVTypes::Vertical));
    }
}

kyUVConstraintsChangeUndoGuard::~kyUVConstraintsChangeUndoGuard()
{
    for (std::size_t i = 0; i < nodeIds_.size(); ++i) {
        // Held: the message of the first command may lead to anything.
        const osg::RefPtr<osg::Node> node(kyNodeUtils::getNodeFromId(nodeIds_[i]));
        const osg::RefPtr<osg::Geometry> geometry(osg::coreAs<osg::Geometry>(node.get()));
        if (!geometry)
            continue;
        auto nextU = kyUVUtils::getConstrainedEdges(geometry, node, kyUVTypes::Horizontal);
        auto nextV = kyUVUtils::getConstrainedEdges(geometry, node, kyUVTypes::Vertical);
        addCommand(geometry, node, std::move(prevEdgesU_[i]), std::move(nextU),
                   kyUVTypes::Horizontal);
        addCommand(geometry, node, std::move(prevEdgesV_[i]), std::move(nextV),
                   kyUVTypes::Vertical);
    }
}

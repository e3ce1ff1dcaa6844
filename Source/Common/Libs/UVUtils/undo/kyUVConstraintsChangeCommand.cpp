#include "UVUtils/undo/kyUVConstraintsChangeCommand.h"

#include "OpenSGUtils/kyOpenSGUtils.h"
#include "UVUtils/model/kyUVUtils.h"

#include <utility>

kyUVConstraintsChangeCommand::kyUVConstraintsChangeCommand(
    const osg::GeometryPtr& geometry, const osg::NodePtr& node, std::vector<Edge> prevEdges,
    std::vector<Edge> nextEdges, kyUVTypes::EdgeConstraint constraint, QUndoCommand* parent)
    : kyUndoCommand({tr("UV Constraints Change").toUtf8().constData(), tr("UV Editor")}, parent),
      geometry_(geometry), node_(node), prevEdges_(std::move(prevEdges)),
      nextEdges_(std::move(nextEdges)), constraint_(constraint)
{}

kyUVConstraintsChangeCommand::~kyUVConstraintsChangeCommand() = default;

void kyUVConstraintsChangeCommand::undo()
{
    change(prevEdges_);
}

void kyUVConstraintsChangeCommand::redo()
{
    if (std::exchange(firstRedo_, false))
        kyOpenSGUtils::call("UVConstraintChanged", 0);
    else
        change(nextEdges_);
}

void kyUVConstraintsChangeCommand::change(const std::vector<Edge>& edges) const
{
    kyUVUtils::setConstrainedEdges(geometry_.get(), node_.get(), edges, constraint_);
    kyOpenSGUtils::call("UVConstraintChanged", 0);
}

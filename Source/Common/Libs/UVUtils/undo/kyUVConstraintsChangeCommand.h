#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "UVUtils/model/Edge.h"
#include "UVUtils/model/kyUVTypes.h"
#include "UVUtils/undo/UncountedHandle.h"
#include "UndoUtils/kyUndoCommand.h"

#include <vector>

/// A change of the edges that a geometry or shell holds straight in one direction, which has
/// happened already. The first redo does not write; every undo and redo tells
/// "UVConstraintChanged".
///
/// A geometry or node that is gone counts as null; neither is kept alive.
class kyUVConstraintsChangeCommand : public kyUndoCommand
{
    Q_DECLARE_TR_FUNCTIONS(kyUVConstraintsChangeCommand)

public:
    /// prevEdges, nextEdges  before and after, as kyUVUtils::getConstrainedEdges gives them
    kyUVConstraintsChangeCommand(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                 std::vector<Edge> prevEdges, std::vector<Edge> nextEdges,
                                 kyUVTypes::EdgeConstraint constraint, QUndoCommand* parent);
    ~kyUVConstraintsChangeCommand() override;

    void undo() override;
    void redo() override;

private:
    void change(const std::vector<Edge>& edges) const;

    bool firstRedo_ = true;
    UncountedHandle<osg::Geometry> geometry_;
    UncountedHandle<osg::Node> node_;
    std::vector<Edge> prevEdges_;
    std::vector<Edge> nextEdges_;
    kyUVTypes::EdgeConstraint constraint_;
};

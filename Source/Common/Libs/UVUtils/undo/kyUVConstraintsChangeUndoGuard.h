#pragma once

#include "OpenSG/Node.h"
#include "UVUtils/model/Edge.h"
#include "UVUtils/undo/UndoStep.h"

#include <vector>

/// Makes everything that happens to the straight edges of some nodes while it lives one step of
/// kyUndoStack::get(0), with two kyUVConstraintsChangeCommands for each node, the horizontal one
/// first.
class kyUVConstraintsChangeUndoGuard : private UndoStep
{
public:
    /// nodes  those without a geometry are passed over, and so are in the end those that are gone;
    ///        the step is there also without any
    kyUVConstraintsChangeUndoGuard(const kyUndoString& string,
                                   const std::vector<osg::NodePtr>& nodes);
    ~kyUVConstraintsChangeUndoGuard();
    kyUVConstraintsChangeUndoGuard(const kyUVConstraintsChangeUndoGuard&) = delete;
    kyUVConstraintsChangeUndoGuard& operator=(const kyUVConstraintsChangeUndoGuard&) = delete;

private:
    std::vector<unsigned int> nodeIds_;         ///< nodes are not kept alive
    std::vector<std::vector<Edge>> prevEdgesU_; ///< [node] horizontal
    std::vector<std::vector<Edge>> prevEdgesV_; ///< [node] vertical
};

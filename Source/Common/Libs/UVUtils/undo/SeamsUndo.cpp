// The undoable forms of cutting and sewing.

#include "OpenSG/CoreAs.h"
#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/undo/kyUVTopologyChangeCommand.h"
#include "UndoUtils/kyUndoStack.h"

#include <memory>

namespace
{

using Operation = void(const osg::GeometryPtr&, const osg::NodePtr&, kyUVTypes::UVSet,
                       kyTopologyBridge*);

kyUVUtils::UVArray allUVs(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                          kyUVTypes::UVSet set)
{
    kyUVUtils::UVArray uvs;
    kyUVUtils::getUVValues(geometry, node, set, uvs);
    return uvs;
}

/// Runs an operation on one node and puts a command onto the stack that takes it back.
void runUndoably(const osg::GeometryPtr& geometry, const osg::NodePtr& node, kyUVTypes::UVSet set,
                 Operation& operation)
{
    auto command =
        std::make_unique<kyUVTopologyChangeCommand>(geometry, node, set, true, true, nullptr);
    command->setLastUVs(allUVs(geometry, node, set));
    command->saveLastSelections();
    operation(geometry, node, set, command->getTopoBridge());
    osg::GeoTmpIndexEditInterface::setNullforAll(geometry); // they name the vertices from before
    command->setNextUVs(allUVs(geometry, node, set));
    command->saveNextSelections();
    kyUndoStack::get(0).add(command.release());
}

void runUndoably(const std::vector<osg::NodePtr>& nodes, kyUVTypes::UVSet set, Operation& operation)
{
    for (const osg::NodePtr& node : nodes)
        if (const auto geometry = osg::coreAs<osg::Geometry>(node))
            runUndoably(geometry, node, set, operation);
}

} // namespace

// The lists of nodes are copies: callbacks of the application run while we walk through them.
// NOLINTBEGIN(performance-unnecessary-value-param)

void kyUVUtils::cutAlongEdgesUndo(std::vector<osg::NodePtr> nodes, kyUVTypes::UVSet uvSet)
{
    runUndoably(nodes, uvSet, cutAlongEdges);
}

void kyUVUtils::sewAlongEdgesUndo(std::vector<osg::NodePtr> nodes, kyUVTypes::UVSet uvSet)
{
    runUndoably(nodes, uvSet, sewAlongEdges);
}

// NOLINTEND(performance-unnecessary-value-param)

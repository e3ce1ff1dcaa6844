#include "scene/SeamOperation.h"

#include "scene/SceneState.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "UVUtils/editing/kyUVSelection.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyTopologyBridge.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/undo/kyUVTopologyChangeCommand.h"
#include "UndoUtils/kyUndoStack.h"

#include <memory>

namespace uvtool
{
namespace
{

/// The undo stack that the library uses.
constexpr unsigned int undoStack = 0;

/// Without its steps, which name geometry of the scene, at the beginning and at the end.
class UndoSession
{
public:
    UndoSession() { stack().clear(); }
    ~UndoSession() { stack().clear(); }
    UndoSession(const UndoSession&) = delete;
    UndoSession& operator=(const UndoSession&) = delete;

    static kyUndoStack& stack() { return kyUndoStack::get(undoStack); }
};

void select(const SceneGeometry& scene, kyUVTypes::UVSet set, const SeamOperation& operation)
{
    osg::GeoTmpIndexEditInterface edges(scene.core(), kyUVTypes::SelectedEdges);
    edges.setType(osg::GeoPrimitive::Lines);
    edges.assign(operation.edges);
    edges.commit();
    kyUVSelection::selectIslandsBySeeds(scene.core(), scene.node, set, operation.seeds);
}

void apply(const SceneGeometry& scene, kyUVTypes::UVSet set, const SeamOperation& operation,
           kyTopologyBridge* bridge)
{
    const osg::GeometryPtr core = scene.core();
    switch (operation.kind) {
    case SeamOperation::CutEdges:
        kyUVUtils::cutAlongEdges(core, scene.node, set, bridge);
        break;
    case SeamOperation::SewEdges:
        kyUVUtils::sewAlongEdges(core, scene.node, set, bridge);
        break;
    case SeamOperation::SewSelectedIslands:
        kyUVUtils::sewSelectedIslands(core, scene.node, set, operation.otherIslandOnly,
                                      operation.matchUVs, bridge);
        break;
    case SeamOperation::SewAllIslands:
        kyUVUtils::sewAllIslands(core, scene.node, set, operation.otherIslandOnly,
                                 operation.matchUVs, bridge);
        break;
    }
}

/// The library has undoable forms for edges only; this is what they do, for islands.
void sewIslandsUndo(const SceneGeometry& scene, kyUVTypes::UVSet set,
                    const SeamOperation& operation)
{
    const osg::GeometryPtr core = scene.core();
    auto command =
        std::make_unique<kyUVTopologyChangeCommand>(core, scene.node, set, true, true, nullptr);
    kyUVUtils::UVArray uvs;
    kyUVUtils::getUVValues(core, scene.node, set, uvs);
    command->setLastUVs(uvs);
    command->saveLastSelections();
    apply(scene, set, operation, command->getTopoBridge());
    osg::GeoTmpIndexEditInterface::setNullforAll(core);
    kyUVUtils::getUVValues(core, scene.node, set, uvs);
    command->setNextUVs(uvs);
    command->saveNextSelections();
    UndoSession::stack().add(command.release());
}

void applyAsUndoStep(const SceneGeometry& scene, kyUVTypes::UVSet set,
                     const SeamOperation& operation)
{
    const osg::NodePtr node = scene.node;
    if (operation.kind == SeamOperation::CutEdges)
        kyUVUtils::cutAlongEdgesUndo({node}, set);
    else if (operation.kind == SeamOperation::SewEdges)
        kyUVUtils::sewAlongEdgesUndo({node}, set);
    else
        sewIslandsUndo(scene, set, operation);
}

} // namespace

void runSeamOperation(const SceneGeometry& scene, std::size_t slot, const SeamOperation& operation)
{
    const auto set = static_cast<kyUVTypes::UVSet>(slot);
    select(scene, set, operation);
    apply(scene, set, operation, nullptr);
}

std::string runAndCheckUndo(const SceneGeometry& scene, std::size_t slot,
                            const SeamOperation& operation)
{
    const auto set = static_cast<kyUVTypes::UVSet>(slot);
    const UndoSession session;
    select(scene, set, operation);
    const SceneState before = stateOf(scene, slot);
    applyAsUndoStep(scene, set, operation);
    const SceneState after = stateOf(scene, slot);

    const bool isUndone = UndoSession::stack().undo();
    const std::string undoFault = differenceOf(before, stateOf(scene, slot));
    const bool isRedone = UndoSession::stack().redo();
    const std::string redoFault = differenceOf(after, stateOf(scene, slot));
    if (!isUndone || !isRedone)
        return "the undo stack has no step for it";
    if (!undoFault.empty())
        return undoFault + " after undo are not what they were before";
    return redoFault.empty() ? "" : redoFault + " after redo are not what they were after";
}

} // namespace uvtool

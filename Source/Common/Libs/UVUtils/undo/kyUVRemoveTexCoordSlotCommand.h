#pragma once

#include "OpenSG/GeoPropertyRoles.h"
#include "OpenSG/Node.h"
#include "OpenSG/RefPtr.h"
#include "UVUtils/model/kyUVTypes.h"
#include "UndoUtils/kyUndoCommand.h"

#include <map>

/// Takes a UV slot away from a geometry, or from the active surfaces of a shell; the first redo
/// does it. The properties live on in the command, and an undo puts the very same back. Every undo
/// and redo tells "UVChanged".
///
/// What is captured at construction is what undo and redo work on. A node without a usable geometry
/// captures nothing, and geometries that are gone are passed over.
class kyUVRemoveTexCoordSlotCommand : public kyUndoCommand
{
    Q_DECLARE_TR_FUNCTIONS(kyUVRemoveTexCoordSlotCommand)

public:
    /// Changes nothing yet.
    kyUVRemoveTexCoordSlotCommand(const osg::NodePtr& node, kyUVTypes::UVSet set,
                                  QUndoCommand* parent);
    ~kyUVRemoveTexCoordSlotCommand() override;

    void undo() override;
    void redo() override;

private:
    /// By the container id of the geometry; null where the slot was empty.
    std::map<unsigned int, osg::RefPtr<osg::GeoTexCoords>> savedSlots_;
    kyUVTypes::UVSet set_;
};

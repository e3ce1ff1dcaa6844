#include "UVUtils/undo/kyUVRemoveTexCoordSlotCommand.h"

#include "OpenSGUtils/kyOpenSGUtils.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/kyUVUtils.h"

kyUVRemoveTexCoordSlotCommand::kyUVRemoveTexCoordSlotCommand(const osg::NodePtr& node,
                                                             kyUVTypes::UVSet set,
                                                             QUndoCommand* parent)
    : kyUndoCommand({tr("Set UV Set").toUtf8().constData(), tr("UV Editor")}, parent), set_(set)
{
    for (const ActiveSurface& surface : usableSurfaces(node))
        savedSlots_[surface.geometry->getId()] =
            surface.geometry->getTexSlot(static_cast<unsigned int>(set));
}

kyUVRemoveTexCoordSlotCommand::~kyUVRemoveTexCoordSlotCommand() = default;

void kyUVRemoveTexCoordSlotCommand::undo()
{
    for (const auto& [id, property] : savedSlots_)
        kyUVUtils::setTexSlot(id, set_, property.get());
    kyOpenSGUtils::call("UVChanged", 0);
}

void kyUVRemoveTexCoordSlotCommand::redo()
{
    for (const auto& [id, property] : savedSlots_)
        kyUVUtils::setTexSlot(id, set_, osg::NullFC);
    kyOpenSGUtils::call("UVChanged", 0);
}

#include "UVUtils/undo/kyUVLatticeToolStateResetCommand.h"

#include "OpenSGUtils/kyOpenSGUtils.h"

#include <utility>

kyUVLatticeToolStateResetCommand::kyUVLatticeToolStateResetCommand(const kyUndoString& string,
                                                                   Getter getter, Setter setter,
                                                                   QUndoCommand* parent)
    : kyUndoCommand(string, parent), savedState_(std::make_unique<kyUVLatticeToolState>()),
      getter_(std::move(getter)), setter_(std::move(setter))
{}

kyUVLatticeToolStateResetCommand::~kyUVLatticeToolStateResetCommand() = default;

void kyUVLatticeToolStateResetCommand::undo()
{
    toggle();
}

void kyUVLatticeToolStateResetCommand::redo()
{
    toggle();
}

void kyUVLatticeToolStateResetCommand::toggle()
{
    auto live = std::make_unique<kyUVLatticeToolState>();
    getter_(*live);
    setter_(*savedState_);
    savedState_ = std::move(live);
    kyOpenSGUtils::call("VESelectionChanged", 0);
}

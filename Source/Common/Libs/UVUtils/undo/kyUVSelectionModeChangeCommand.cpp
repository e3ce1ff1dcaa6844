#include "UVUtils/undo/kyUVSelectionModeChangeCommand.h"

kyUVSelectionModeChangeCommand::kyUVSelectionModeChangeCommand(const kyUndoString& string,
                                                               kyUVUtils::ESelectMode mode,
                                                               const std::function<void()>& redoFn,
                                                               const std::function<void()>& undoFn,
                                                               QUndoCommand* parent)
    : kyUndoCommand(string, parent), prevMode_(kyUVUtils::getSelectMode()), nextMode_(mode),
      redoFn_(redoFn), undoFn_(undoFn)
{}

kyUVSelectionModeChangeCommand::~kyUVSelectionModeChangeCommand() = default;

void kyUVSelectionModeChangeCommand::undo()
{
    kyUVUtils::setSelectMode(prevMode_);
    if (undoFn_)
        undoFn_();
}

void kyUVSelectionModeChangeCommand::redo()
{
    kyUVUtils::setSelectMode(nextMode_);
    if (redoFn_)
        redoFn_();
}

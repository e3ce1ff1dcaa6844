#pragma once

#include "UVUtils/model/kyUVUtils.h"
#include "UndoUtils/kyUndoCommand.h"

#include <functional>

/// A change of kyUVUtils::getSelectMode, and of what the application keeps beside it; the first
/// redo does it. The setter of the mode tells the application, before the function runs.
class kyUVSelectionModeChangeCommand : public kyUndoCommand
{
    Q_DECLARE_TR_FUNCTIONS(kyUVSelectionModeChangeCommand)

public:
    /// mode    to go to; an undo goes to the one of now
    /// redoFn, undoFn  run after each change of the mode; may be empty
    kyUVSelectionModeChangeCommand(const kyUndoString& string, kyUVUtils::ESelectMode mode,
                                   const std::function<void()>& redoFn,
                                   const std::function<void()>& undoFn, QUndoCommand* parent);
    ~kyUVSelectionModeChangeCommand() override;

    void undo() override;
    void redo() override;

private:
    kyUVUtils::ESelectMode prevMode_;
    kyUVUtils::ESelectMode nextMode_;
    std::function<void()> redoFn_;
    std::function<void()> undoFn_;
};

#pragma once

#include "UndoUtils/kyUndoStack.h"

/// While it lives, a step of the application's undo stack is open, and takes the commands that are
/// added.
class UndoStep
{
public:
    /// merge  whether the step may become a part of the one before it
    UndoStep(const kyUndoString& string, bool merge)
    {
        kyUndoStack::get(0).beginMultiCommand(string.text(), string.description(), merge);
    }
    ~UndoStep() { kyUndoStack::get(0).endMultiCommand(); }
    UndoStep(const UndoStep&) = delete;
    UndoStep& operator=(const UndoStep&) = delete;
};

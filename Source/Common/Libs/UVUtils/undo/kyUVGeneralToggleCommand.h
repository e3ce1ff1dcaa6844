#pragma once

#include "UndoUtils/kyUndoCommand.h"

#include <functional>

/// Something of the application's that is its own inverse: undo and redo, the first one too, run
/// it. It merges with nothing and tells no message.
class kyUVGeneralToggleCommand : public kyUndoCommand
{
    Q_DECLARE_TR_FUNCTIONS(kyUVGeneralToggleCommand)

public:
    /// fn  may be empty
    kyUVGeneralToggleCommand(const kyUndoString& string, std::function<void()> fn,
                             QUndoCommand* parent);
    ~kyUVGeneralToggleCommand() override;

    void undo() override;
    void redo() override;

private:
    void toggle() const;

    std::function<void()> fn_;
};

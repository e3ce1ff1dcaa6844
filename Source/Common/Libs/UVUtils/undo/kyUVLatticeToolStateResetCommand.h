#pragma once

#include "UVUtils/editing/kyUVLatticeToolState.h"
#include "UndoUtils/kyUndoCommand.h"

#include <functional>
#include <memory>

/// Sets the application's lattice tool to a state; adding the command does it. Undo and redo are
/// the same: they exchange the saved state with the live one, and tell "VESelectionChanged". It
/// merges with nothing.
class kyUVLatticeToolStateResetCommand : public kyUndoCommand
{
    Q_DECLARE_TR_FUNCTIONS(kyUVLatticeToolStateResetCommand)

public:
    using Getter = std::function<void(kyUVLatticeToolState&)>;
    using Setter = std::function<void(const kyUVLatticeToolState&)>;

    /// getter  fills a new record with the live state; the meta data in it then belongs to the
    ///         record
    /// setter  makes the live state what the record says, with copies of its meta data; an empty
    ///         function, here or there, ends in std::bad_function_call
    kyUVLatticeToolStateResetCommand(const kyUndoString& string, Getter getter, Setter setter,
                                     QUndoCommand* parent);
    ~kyUVLatticeToolStateResetCommand() override;

    /// The saved state: before the command is added, the one to go to, which the caller fills. An
    /// undo or redo replaces it by another record.
    kyUVLatticeToolState& getStateRef() { return *savedState_; }

    void undo() override;
    void redo() override;

private:
    void toggle();

    std::unique_ptr<kyUVLatticeToolState> savedState_;
    Getter getter_;
    Setter setter_;
};

#pragma once

#include "UndoUtils/kyUndoCommand.h"

/// The base of the commands of a continuous edit, such as a drag of the mouse, which makes many
/// small changes that are undone as one.
///
/// Such a command holds one saved state. Undo and redo are the same: they exchange it with the live
/// one. In a run of compatible commands, each within the response delta of the one before, all
/// merge into the oldest, which holds the state from before the run; so a run takes the memory of
/// one command.
///
/// Command  the derived class, with a member isCompatible(const Command*) const
template <class Command>
class kyUVContinousChangeBase : public kyUndoCommand
{
    Q_DECLARE_TR_FUNCTIONS(kyUVContinousChangeBase)

public:
    kyUVContinousChangeBase(const kyUndoString& string, QUndoCommand* parent)
        : kyUndoCommand(string, parent)
    {}

    /// Takes over the time of the other's change, and nothing else.
    bool mergeWith(const QUndoCommand* other) override
    {
        if (!canMergeWith(other))
            return false;
        takeTimeFrom(static_cast<const Command&>(*other));
        return true;
    }
    bool canMergeWith(const QUndoCommand* other) const override
    {
        return kyUndoCommand::canMergeWith(other) &&
               static_cast<const Command&>(*this).isCompatible(static_cast<const Command*>(other));
    }
};

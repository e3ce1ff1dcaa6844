#pragma once

#include "UndoUtils/kyUndoCommandBase.h"

#include <cstddef>
#include <memory>
#include <vector>

/// Several commands that are undone and redone as one.
///
/// Commands come in by append. Those that were made with this one as their parent belong to it as
/// well, before all others; a command that has such ones does not merge.
class kyMultiCommand : public kyUndoCommandBase
{
    Q_DECLARE_TR_FUNCTIONS(kyMultiCommand)

public:
    /// Merging is enabled at first.
    explicit kyMultiCommand(const kyUndoString& string, QUndoCommand* parent = nullptr);
    ~kyMultiCommand() override;

    /// From the last command to the first.
    void undo() override;
    /// From the first to the last.
    void redo() override;
    /// Merges each command of `other` into the one in the same place, if canMergeWith holds. When
    /// one of them refuses after all, this returns false, and both multi commands keep all they
    /// have: undoing both leads back to where it did before.
    bool mergeWith(const QUndoCommand* other) override;

    /// As that of a single command, with the messages of the commands in place of an empty text.
    QString makeMessage() const override;
    /// Is `other` of the same class, are both enabled, do they have the same text and the same
    /// number of commands, at least one, and can they be merged pair by pair?
    bool canMergeWith(const QUndoCommand* other) const override;

    virtual void setMergeEnabled(bool enabled);
    virtual bool isMergeEnabled() const;

    /// Takes the command over; it is not run. Null is passed over.
    void append(std::unique_ptr<kyUndoCommandBase> command);
    std::size_t size() const { return commands_.size(); }
    /// Null beyond the end.
    kyUndoCommandBase* at(std::size_t i) const;

private:
    std::vector<std::unique_ptr<kyUndoCommandBase>> commands_;
    bool isMergeEnabled_ = true;
};

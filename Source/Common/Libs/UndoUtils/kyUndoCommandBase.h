#pragma once

#include "UndoUtils/kyUndoString.h"

#include <QCoreApplication>
#include <QUndoCommand>

/// What kyUndoStack takes: single commands (kyUndoCommand) and steps of several (kyMultiCommand).
class kyUndoCommandBase : public QUndoCommand
{
    Q_DECLARE_TR_FUNCTIONS(kyUndoCommandBase)

public:
    /// parent  null, or a command that owns this one and runs it with its own undo and redo
    explicit kyUndoCommandBase(const kyUndoString& string, QUndoCommand* parent = nullptr);
    ~kyUndoCommandBase() override;

    /// The command that this one is a part of; null for a step of its own.
    virtual QUndoCommand* parent() const;
    virtual void setDescription(const QString& description);
    virtual QString getDescription() const;
    /// One line that tells the user what was done.
    virtual QString makeMessage() const = 0;
    /// May `other`, the later one, become a part of this command? Changes neither. A refusal binds
    /// mergeWith, a consent does not. False for null.
    virtual bool canMergeWith(const QUndoCommand* other) const = 0;

private:
    friend class kyMultiCommand;

    QString description_;
    QUndoCommand* parent_;
};

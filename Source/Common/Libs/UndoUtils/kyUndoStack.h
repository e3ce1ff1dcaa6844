#pragma once

#include "UndoUtils/kyMultiCommand.h"
#include "UndoUtils/kyUndoCommandBase.h"

#include <QString>

#include <memory>
#include <vector>

/// The steps that the user can take back, oldest first, and those taken back that can be redone.
///
/// A step is one command or, between beginMultiCommand and endMultiCommand, a kyMultiCommand of
/// several. The stack owns its commands. All of it belongs to one thread.
///
/// A command that runs must not find the stack changed under it, and what it does is no step of its
/// own: while one is run, undone or redone, a command that is added is run and dropped, and all
/// other operations that change the stack do nothing.
class kyUndoStack
{
public:
    kyUndoStack() = default;
    kyUndoStack(const kyUndoStack&) = delete;
    kyUndoStack& operator=(const kyUndoStack&) = delete;

    /// The stack of that number, made on first use; lives to the end of the process. 0 is the
    /// application's.
    static kyUndoStack& get(unsigned int number);

    /// Takes a command over and calls its redo, once. Then it becomes a part of the command before
    /// it, if that one's mergeWith agrees, or the last command of the step that is open, or a step
    /// of its own. It does not merge right after an undo or redo. Steps that were undone go.
    ///
    /// A redo that throws leaves the stack as it was, and the command is gone.
    ///
    /// Returns the command that is now on the stack: the one before it, if that took it in. Null
    /// for a null command, which does nothing, and for one that is dropped since another is
    /// running.
    kyUndoCommandBase* add(kyUndoCommandBase* command);

    /// Opens a step with that text: the commands that are added until endMultiCommand belong to it.
    /// Inside an open step it opens a multi command that becomes a part of it. Steps that were
    /// undone go.
    ///
    /// merge  whether the step may become a part of the one before it when it is closed
    void beginMultiCommand(const QString& text, const QString& description, bool merge);
    /// Closes what was opened last, without running it again. A step without commands is one too,
    /// and never merges. Does nothing when none is open.
    void endMultiCommand();
    bool isStepOpen() const { return !open_.empty(); }

    /// Takes the last step back, or does the next one again. False, and nothing happens, where
    /// there is none or while a step is open.
    bool undo();
    bool redo();

    /// Steps, done and undone; an open one is not among them yet.
    int count() const { return static_cast<int>(steps_.size()); }
    /// How many of them are done: undo takes back step index() - 1, redo does step index().
    int index() const { return done_; }
    /// Null for a number that no step has.
    const kyUndoCommandBase* command(int i) const;

    /// One line of a list for the user.
    struct Step
    {
        QString text;
        QString description;
        bool isDone = true;
    };
    /// [count()] oldest first.
    std::vector<Step> steps() const;

    /// Drops all steps, and what is open, without undoing anything.
    void clear();

private:
    void keep(std::unique_ptr<kyUndoCommandBase>& command);
    kyUndoCommandBase* lastCommand() const;
    void dropUndone();

    std::vector<std::unique_ptr<kyUndoCommandBase>> steps_;
    std::vector<std::unique_ptr<kyMultiCommand>> open_; ///< outermost first
    int done_ = 0;
    bool mayMerge_ = false;
    bool isRunning_ = false;
};

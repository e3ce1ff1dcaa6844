#pragma once

#include "UndoUtils/kyUndoCommandBase.h"

#include <functional>
#include <typeindex>

/// The base of single commands. It knows when its change was made, so that changes in quick
/// succession can become one.
///
/// Two commands merge only where a class says how, by a mergeWith of its own; that of this class
/// refuses.
class kyUndoCommand : public kyUndoCommandBase
{
    Q_DECLARE_TR_FUNCTIONS(kyUndoCommand)

public:
    explicit kyUndoCommand(const kyUndoString& string, QUndoCommand* parent = nullptr);
    ~kyUndoCommand() override;

    /// "text (description)", or the text alone without a description.
    QString makeMessage() const override;
    /// Is `other` of exactly the same class, and no further away in time than the response delta of
    /// this command? Then the caller may read the other's fields.
    bool canMergeWith(const QUndoCommand* other) const override;

    /// In seconds, 0.5 until set. Below 0, or not a number: nothing merges into this command.
    void setMergeResponseDelta(const double& seconds);

    /// A number for a class, to be returned by id(): the same for the same class through a run of
    /// the program, another one for each class, never -1.
    static int makeId(std::type_index type);

    /// Seconds from any start.
    using Clock = std::function<double()>;
    /// Null for the clock of the start, which is monotonic.
    static void setClock(Clock clock);

protected:
    /// For a mergeWith: the last change of this command is now that of the other.
    void takeTimeFrom(const kyUndoCommand& other) { lastChange_ = other.lastChange_; }

private:
    double lastChange_; ///< in seconds of the clock; at first the time of construction
    double mergeResponseDelta_ = 0.5;
};

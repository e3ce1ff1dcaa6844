#include "UVUtils/undo/kyUVPivotContinousChangeCommand.h"

#include <utility>

kyUVPivotContinousChangeCommand::kyUVPivotContinousChangeCommand(
    const kyUndoString& string, int groupKey, PivotFunction pivotFn, const Pivot& pivot,
    FlagFunction flagFn, bool flag, QUndoCommand* parent)
    : kyUVContinousChangeBase(string, parent), groupKey_(groupKey), savedPivot_(pivot),
      savedFlag_(flag), pivotFn_(std::move(pivotFn)), flagFn_(std::move(flagFn))
{}

kyUVPivotContinousChangeCommand::~kyUVPivotContinousChangeCommand() = default;

int kyUVPivotContinousChangeCommand::commandId()
{
    static const int number = makeId(typeid(kyUVPivotContinousChangeCommand));
    return number;
}

int kyUVPivotContinousChangeCommand::id() const
{
    return commandId();
}

bool kyUVPivotContinousChangeCommand::isCompatible(
    const kyUVPivotContinousChangeCommand* other) const
{
    return other->groupKey_ == groupKey_;
}

void kyUVPivotContinousChangeCommand::undo()
{
    toggle();
}

void kyUVPivotContinousChangeCommand::redo()
{
    toggle();
}

void kyUVPivotContinousChangeCommand::toggle()
{
    savedFlag_ = flagFn_(savedFlag_);
    savedPivot_ = pivotFn_(savedPivot_);
}

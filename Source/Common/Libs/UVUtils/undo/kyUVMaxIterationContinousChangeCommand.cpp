#include "UVUtils/undo/kyUVMaxIterationContinousChangeCommand.h"

#include <utility>

kyUVMaxIterationContinousChangeCommand::kyUVMaxIterationContinousChangeCommand(
    const kyUndoString& string, int value, Getter getter, Setter setter, QUndoCommand* parent)
    : kyUVContinousChangeBase(string, parent), savedIterations_(value), getter_(std::move(getter)),
      setter_(std::move(setter))
{}

kyUVMaxIterationContinousChangeCommand::~kyUVMaxIterationContinousChangeCommand() = default;

int kyUVMaxIterationContinousChangeCommand::commandId()
{
    static const int number = makeId(typeid(kyUVMaxIterationContinousChangeCommand));
    return number;
}

int kyUVMaxIterationContinousChangeCommand::id() const
{
    return commandId();
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): one of the continuous commands
bool kyUVMaxIterationContinousChangeCommand::isCompatible(
    const kyUVMaxIterationContinousChangeCommand* /*other*/) const
{
    return true;
}

void kyUVMaxIterationContinousChangeCommand::undo()
{
    toggle();
}

void kyUVMaxIterationContinousChangeCommand::redo()
{
    toggle();
}

void kyUVMaxIterationContinousChangeCommand::toggle()
{
    const int old = getter_();
    setter_(savedIterations_);
    savedIterations_ = old;
}

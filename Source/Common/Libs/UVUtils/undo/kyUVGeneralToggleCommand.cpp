#include "UVUtils/undo/kyUVGeneralToggleCommand.h"

#include <utility>

kyUVGeneralToggleCommand::kyUVGeneralToggleCommand(const kyUndoString& string,
                                                   std::function<void()> fn, QUndoCommand* parent)
    : kyUndoCommand(string, parent), fn_(std::move(fn))
{}

kyUVGeneralToggleCommand::~kyUVGeneralToggleCommand() = default;

void kyUVGeneralToggleCommand::undo()
{
    toggle();
}

void kyUVGeneralToggleCommand::redo()
{
    toggle();
}

void kyUVGeneralToggleCommand::toggle() const
{
    if (fn_)
        fn_();
}

#include "UVUtils/undo/kyUVMergeGroup.h"

#include "UndoUtils/kyUndoCommand.h"

kyUVMergeGroup::kyUVMergeGroup(const kyUndoString& string, unsigned int mark)
    : kyMultiCommand(string), mark_(mark)
{}

kyUVMergeGroup::~kyUVMergeGroup() = default;

int kyUVMergeGroup::commandId()
{
    static const int number = kyUndoCommand::makeId(typeid(kyUVMergeGroup));
    return number;
}

int kyUVMergeGroup::id() const
{
    return commandId();
}

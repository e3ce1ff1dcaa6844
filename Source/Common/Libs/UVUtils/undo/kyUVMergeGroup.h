#pragma once

#include "UndoUtils/kyMultiCommand.h"

/// Several commands that are undone as one, with a mark by which the application knows them again.
/// The mark is stored and handed back; merging, as for every kyMultiCommand, does not look at it.
class kyUVMergeGroup : public kyMultiCommand
{
    Q_DECLARE_TR_FUNCTIONS(kyUVMergeGroup)

public:
    kyUVMergeGroup(const kyUndoString& string, unsigned int mark);
    ~kyUVMergeGroup() override;

    static int commandId();
    int id() const override;
    unsigned int getMark() const { return mark_; }

private:
    unsigned int mark_;
};

#include "UndoUtils/kyUndoCommandBase.h"

kyUndoCommandBase::kyUndoCommandBase(const kyUndoString& string, QUndoCommand* parent)
    : QUndoCommand(string.text(), parent), description_(string.description()), parent_(parent)
{}

kyUndoCommandBase::~kyUndoCommandBase() = default;

QUndoCommand* kyUndoCommandBase::parent() const
{
    return parent_;
}

void kyUndoCommandBase::setDescription(const QString& description)
{
    description_ = description;
}

QString kyUndoCommandBase::getDescription() const
{
    return description_;
}

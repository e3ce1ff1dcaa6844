#include "UndoUtils/kyMultiCommand.h"

#include <QStringList>

#include <algorithm>
#include <typeinfo>
#include <utility>

kyMultiCommand::kyMultiCommand(const kyUndoString& string, QUndoCommand* parent)
    : kyUndoCommandBase(string, parent)
{}

kyMultiCommand::~kyMultiCommand() = default;

void kyMultiCommand::undo()
{
    for (auto command = commands_.rbegin(); command != commands_.rend(); ++command)
        (*command)->undo();
    QUndoCommand::undo();
}

void kyMultiCommand::redo()
{
    QUndoCommand::redo();
    for (const auto& command : commands_)
        command->redo();
}

bool kyMultiCommand::mergeWith(const QUndoCommand* other)
{
    if (!canMergeWith(other))
        return false;
    // A class that says it could merge, but has no mergeWith, refuses here. Pairs before it have
    // merged then, and may redo to the later state already; the later commands, which stay, lead
    // there in any case.
    const auto& later = static_cast<const kyMultiCommand&>(*other).commands_;
    return std::equal(commands_.begin(), commands_.end(), later.begin(),
                      [](const auto& mine, const auto& its) { return mine->mergeWith(its.get()); });
}

QString kyMultiCommand::makeMessage() const
{
    QString message = text();
    if (message.isEmpty()) {
        QStringList messages;
        for (const auto& command : commands_)
            messages.append(command->makeMessage());
        message = messages.join(", ");
    }
    const QString description = getDescription();
    return description.isEmpty() ? message : QString("%1 (%2)").arg(message, description);
}

bool kyMultiCommand::canMergeWith(const QUndoCommand* other) const
{
    const auto* later = dynamic_cast<const kyMultiCommand*>(other);
    if (!later || typeid(*this) != typeid(*later) || !isMergeEnabled() || !later->isMergeEnabled())
        return false;
    return text() == later->text() && size() > 0 && size() == later->size() && childCount() == 0 &&
           later->childCount() == 0 &&
           std::equal(
               commands_.begin(), commands_.end(), later->commands_.begin(),
               [](const auto& mine, const auto& its) { return mine->canMergeWith(its.get()); });
}

void kyMultiCommand::setMergeEnabled(bool enabled)
{
    isMergeEnabled_ = enabled;
}

bool kyMultiCommand::isMergeEnabled() const
{
    return isMergeEnabled_;
}

void kyMultiCommand::append(std::unique_ptr<kyUndoCommandBase> command)
{
    if (!command)
        return;
    command->parent_ = this;
    commands_.push_back(std::move(command));
}

kyUndoCommandBase* kyMultiCommand::at(std::size_t i) const
{
    return i < commands_.size() ? commands_[i].get() : nullptr;
}

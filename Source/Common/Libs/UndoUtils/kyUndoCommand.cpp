#include "UndoUtils/kyUndoCommand.h"

#include <chrono>
#include <cmath>
#include <map>
#include <typeinfo>
#include <utility>

namespace
{

double steadySeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

kyUndoCommand::Clock& clockInUse()
{
    static auto& clock = *new kyUndoCommand::Clock(&steadySeconds);
    return clock;
}

} // namespace

kyUndoCommand::kyUndoCommand(const kyUndoString& string, QUndoCommand* parent)
    : kyUndoCommandBase(string, parent), lastChange_(clockInUse()())
{}

kyUndoCommand::~kyUndoCommand() = default;

QString kyUndoCommand::makeMessage() const
{
    const QString description = getDescription();
    return description.isEmpty() ? text() : QString("%1 (%2)").arg(text(), description);
}

bool kyUndoCommand::canMergeWith(const QUndoCommand* other) const
{
    const auto* command = dynamic_cast<const kyUndoCommand*>(other);
    return command && typeid(*this) == typeid(*command) &&
           std::abs(command->lastChange_ - lastChange_) <= mergeResponseDelta_;
}

void kyUndoCommand::setMergeResponseDelta(const double& seconds)
{
    mergeResponseDelta_ = seconds;
}

int kyUndoCommand::makeId(std::type_index type)
{
    static auto& idOfType = *new std::map<std::type_index, int>;
    return idOfType.try_emplace(type, static_cast<int>(idOfType.size()) + 1).first->second;
}

void kyUndoCommand::setClock(Clock clock)
{
    clockInUse() = clock ? std::move(clock) : Clock(&steadySeconds);
}

#include "UVUtils/undo/kyUVLattiCtrlPntContinousChangeCommand.h"

#include "OpenSGUtils/kyOpenSGUtils.h"

#include <utility>

kyUVLattiCtrlPntContinousChangeCommand::kyUVLattiCtrlPntContinousChangeCommand(
    const kyUndoString& string, Getter getter, Setter setter, const Points& points, float value,
    QUndoCommand* parent)
    : kyUVContinousChangeBase(string, parent), savedPoints_(points), savedValue_(value),
      getter_(std::move(getter)), setter_(std::move(setter))
{}

kyUVLattiCtrlPntContinousChangeCommand::~kyUVLattiCtrlPntContinousChangeCommand() = default;

int kyUVLattiCtrlPntContinousChangeCommand::commandId()
{
    static const int number = makeId(typeid(kyUVLattiCtrlPntContinousChangeCommand));
    return number;
}

int kyUVLattiCtrlPntContinousChangeCommand::id() const
{
    return commandId();
}

bool kyUVLattiCtrlPntContinousChangeCommand::isCompatible(
    const kyUVLattiCtrlPntContinousChangeCommand* other) const
{
    return other->savedPoints_.size() == savedPoints_.size();
}

void kyUVLattiCtrlPntContinousChangeCommand::undo()
{
    toggle();
}

void kyUVLattiCtrlPntContinousChangeCommand::redo()
{
    toggle();
}

void kyUVLattiCtrlPntContinousChangeCommand::toggle()
{
    Points points;
    float value = 0;
    getter_(points, value);
    setter_(savedPoints_, savedValue_);
    savedPoints_ = std::move(points);
    savedValue_ = value;
    kyOpenSGUtils::call("UVChanged", 0);
}

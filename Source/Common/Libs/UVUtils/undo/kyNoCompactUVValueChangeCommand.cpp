#include "UVUtils/undo/kyNoCompactUVValueChangeCommand.h"

#include "OpenSGUtils/kyOpenSGUtils.h"
#include "UVUtils/model/kyUVUtils.h"

#include <utility>

kyNoCompactUVValueChangeCommand::kyNoCompactUVValueChangeCommand(const osg::NodePtr& node,
                                                                 kyUVTypes::UVSet set,
                                                                 UVArray prevUVs, UVArray nextUVs,
                                                                 QUndoCommand* parent)
    : kyUndoCommand({tr("UV Values Change").toUtf8().constData(), tr("UV Editor")}, parent),
      node_(node), set_(set), prevUVs_(std::move(prevUVs)), nextUVs_(std::move(nextUVs))
{}

kyNoCompactUVValueChangeCommand::~kyNoCompactUVValueChangeCommand() = default;

void kyNoCompactUVValueChangeCommand::undo()
{
    change(prevUVs_);
}

void kyNoCompactUVValueChangeCommand::redo()
{
    change(nextUVs_);
}

bool kyNoCompactUVValueChangeCommand::mergeWith(const QUndoCommand* other)
{
    if (!canMergeWith(other))
        return false;
    if (other != this)
        nextUVs_ = static_cast<const kyNoCompactUVValueChangeCommand*>(other)->nextUVs_;
    return true;
}

bool kyNoCompactUVValueChangeCommand::canMergeWith(const QUndoCommand* other) const
{
    if (!kyUndoCommand::canMergeWith(other))
        return false;
    const auto& later = static_cast<const kyNoCompactUVValueChangeCommand&>(*other);
    return later.node_ == node_ && later.set_ == set_;
}

void kyNoCompactUVValueChangeCommand::change(const UVArray& uvs) const
{
    if (uvs.empty())
        kyUVUtils::removeUVSet(node_.get(), set_);
    else
        kyUVUtils::setNoCompactUVValues(node_.get(), set_, uvs);
    kyOpenSGUtils::call("UVChanged", 0);
}

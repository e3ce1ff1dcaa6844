#include "UVUtils/undo/kyUVValueChangeCommand.h"

#include "OpenSGUtils/kyOpenSGUtils.h"
#include "UVUtils/model/kyUVUtils.h"

#include <utility>

kyUVValueChangeCommand::kyUVValueChangeCommand(const osg::GeometryPtr& geometry,
                                               const osg::NodePtr& node, kyUVTypes::UVSet set,
                                               UVArray prevUVs, UVArray nextUVs,
                                               QUndoCommand* parent)
    : kyUndoCommand({tr("UV Values Change").toUtf8().constData(), tr("UV Editor")}, parent),
      geometry_(geometry), node_(node), set_(set), prevUVs_(std::move(prevUVs)),
      nextUVs_(std::move(nextUVs))
{}

kyUVValueChangeCommand::~kyUVValueChangeCommand() = default;

void kyUVValueChangeCommand::undo()
{
    change(prevUVs_);
}

void kyUVValueChangeCommand::redo()
{
    if (std::exchange(firstRedo_, false))
        kyOpenSGUtils::call("UVChanged", 0);
    else
        change(nextUVs_);
}

void kyUVValueChangeCommand::change(const UVArray& uvs) const
{
    if (uvs.empty())
        kyUVUtils::removeUVSet(node_.get(), set_);
    else
        kyUVUtils::setUVValues(geometry_.get(), node_.get(), set_, uvs);
    kyOpenSGUtils::call("UVChanged", 0);
}

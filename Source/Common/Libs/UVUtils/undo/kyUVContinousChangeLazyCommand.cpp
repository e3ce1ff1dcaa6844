#include "UVUtils/undo/kyUVContinousChangeLazyCommand.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSGUtils/kyOpenSGUtils.h"
#include "UVUtils/model/kyUVUtils.h"

#include <utility>

kyUVContinousChangeLazyCommand::kyUVContinousChangeLazyCommand(
    const osg::GeometryPtr& geometry, const osg::NodePtr& node, kyUVTypes::UVSet set,
    unsigned int selectionList, bool allVertices, QUndoCommand* parent)
    : kyUVContinousChangeBase({tr("UV Continuous Change").toUtf8().constData(), tr("UV Editor")},
                              parent),
      geometry_(geometry), node_(node), set_(set), selectionList_(selectionList),
      allVertices_(allVertices)
{}

kyUVContinousChangeLazyCommand::~kyUVContinousChangeLazyCommand() = default;

int kyUVContinousChangeLazyCommand::commandId()
{
    static const int number = makeId(typeid(kyUVContinousChangeLazyCommand));
    return number;
}

int kyUVContinousChangeLazyCommand::id() const
{
    return commandId();
}

bool kyUVContinousChangeLazyCommand::isCompatible(const kyUVContinousChangeLazyCommand* other) const
{
    return other->geometry_ == geometry_ && other->selectionList_ == selectionList_ &&
           other->allVertices_ == allVertices_;
}

void kyUVContinousChangeLazyCommand::lazyInit()
{
    if (initialised_)
        return;
    if (!allVertices_) {
        const osg::GeoTmpIndexEditInterface list(geometry_.get(), selectionList_);
        ids_.assign(list.values().begin(), list.values().end());
    }
    savedUVs_ = presentUVs();
    initialised_ = true;
}

void kyUVContinousChangeLazyCommand::undo()
{
    toggle();
}

void kyUVContinousChangeLazyCommand::redo()
{
    toggle();
}

void kyUVContinousChangeLazyCommand::toggle()
{
    if (!initialised_)
        return;
    auto present = presentUVs();
    if (isOfSomeVertices())
        kyUVUtils::setUVValues(geometry_.get(), node_.get(), set_, ids_.data(),
                               static_cast<unsigned int>(ids_.size()), savedUVs_);
    else
        kyUVUtils::setUVValues(geometry_.get(), node_.get(), set_, savedUVs_);
    savedUVs_ = std::move(present);
    kyOpenSGUtils::call("UVChanged", 0);
}

std::vector<osg::Vector<float, 2>> kyUVContinousChangeLazyCommand::presentUVs() const
{
    std::vector<osg::Vector<float, 2>> uvs;
    if (isOfSomeVertices())
        kyUVUtils::getUVValues(geometry_.get(), node_.get(), set_, ids_.data(),
                               static_cast<unsigned int>(ids_.size()), uvs);
    else
        kyUVUtils::getUVValues(geometry_.get(), node_.get(), set_, uvs);
    return uvs;
}

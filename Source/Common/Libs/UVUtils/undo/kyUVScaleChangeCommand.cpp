#include "UVUtils/undo/kyUVScaleChangeCommand.h"

#include "OpenSGUtils/kyOpenSGUtils.h"
#include "UVUtils/model/kyUVUtils.h"

#include <cmath>

namespace
{

/// 1 where nothing takes the factor back.
float reciprocal(float factor)
{
    const float inverse = 1 / factor;
    return std::isfinite(inverse) && inverse != 0 ? inverse : 1.0F;
}

} // namespace

kyUVScaleChangeCommand::kyUVScaleChangeCommand(const osg::GeometryPtr& geometry,
                                               const osg::NodePtr& node, kyUVTypes::UVSet set,
                                               const unsigned int* ids, unsigned int count,
                                               const osg::Vector<float, 2>& pivot, float scaleU,
                                               float scaleV, QUndoCommand* parent)
    : kyUndoCommand({tr("UV Scale Change").toUtf8().constData(), tr("UV Editor")}, parent),
      geometry_(geometry), node_(node), set_(set), ids_(ids, ids + (ids ? count : 0)),
      pivot_(pivot), scaleU_(scaleU), scaleV_(scaleV)
{}

kyUVScaleChangeCommand::~kyUVScaleChangeCommand() = default;

void kyUVScaleChangeCommand::undo()
{
    apply(reciprocal(scaleU_), reciprocal(scaleV_));
}

void kyUVScaleChangeCommand::redo()
{
    apply(scaleU_, scaleV_);
}

void kyUVScaleChangeCommand::apply(float scaleU, float scaleV) const
{
    if (ids_.empty())
        return;
    kyUVUtils::scaleUV(geometry_.get(), node_.get(), set_, ids_.data(),
                       static_cast<unsigned int>(ids_.size()), pivot_, scaleU, scaleV);
    kyOpenSGUtils::call("UVChanged", 0);
}

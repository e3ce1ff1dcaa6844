#include "UVUtils/undo/kyNoCompactUVValueChangeUndoGuard.h"

#include "OpenSGUtils/kyNodeUtils.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/undo/kyNoCompactUVValueChangeCommand.h"

#include <memory>
#include <utility>

namespace
{

constexpr double mergeSeconds = 1.0;

} // namespace

kyNoCompactUVValueChangeUndoGuard::kyNoCompactUVValueChangeUndoGuard(
    const kyUndoString& string, const std::vector<osg::NodePtr>& nodes, kyUVTypes::UVSet set)
    : UndoStep(string, true), set_(set)
{
    for (const osg::NodePtr& node : nodes)
        if (node)
            kyUVUtils::getNoCompactUVValues(node, set, prevUVs_);
}

kyNoCompactUVValueChangeUndoGuard::kyNoCompactUVValueChangeUndoGuard(
    const std::vector<osg::NodePtr>& nodes, kyUVTypes::UVSet set)
    : kyNoCompactUVValueChangeUndoGuard({tr("Change UV values").toUtf8().constData(), {}}, nodes,
                                        set)
{}

kyNoCompactUVValueChangeUndoGuard::~kyNoCompactUVValueChangeUndoGuard()
{
    for (auto& [nodeId, prevUVs] : prevUVs_) {
        const osg::NodePtr node = kyNodeUtils::getNodeFromId(nodeId);
        if (!node)
            continue;
        kyUVUtils::UVArray next;
        kyUVUtils::getNoCompactUVValues(node, set_, next);
        auto command = std::make_unique<kyNoCompactUVValueChangeCommand>(
            node, set_, std::move(prevUVs), std::move(next), nullptr);
        command->setMergeResponseDelta(mergeSeconds);
        kyUndoStack::get(0).add(command.release());
    }
}

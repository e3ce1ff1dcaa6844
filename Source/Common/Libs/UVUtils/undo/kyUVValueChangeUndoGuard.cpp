#include "UVUtils/undo/kyUVValueChangeUndoGuard.h"

#include "OpenSG/CoreAs.h"
#include "OpenSGUtils/kyNodeUtils.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/undo/kyUVValueChangeCommand.h"

#include <memory>
#include <utility>

kyUVValueChangeUndoGuard::kyUVValueChangeUndoGuard(const kyUndoString& string,
                                                   const std::vector<osg::NodePtr>& nodes,
                                                   kyUVTypes::UVSet set)
    : UndoStep(string, false), set_(set)
{
    for (const osg::NodePtr& node : nodes) {
        const auto geometry = osg::coreAs<osg::Geometry>(node);
        if (!geometry)
            continue;
        nodeIds_.push_back(kyNodeUtils::getNodeId(node));
        kyUVUtils::getUVValues(geometry, node, set, prevUVs_.emplace_back());
    }
}

kyUVValueChangeUndoGuard::kyUVValueChangeUndoGuard(const std::vector<osg::NodePtr>& nodes,
                                                   kyUVTypes::UVSet set)
    : kyUVValueChangeUndoGuard({tr("Change UV values").toUtf8().constData(), {}}, nodes, set)
{}

kyUVValueChangeUndoGuard::~kyUVValueChangeUndoGuard()
{
    for (std::size_t i = 0; i < nodeIds_.size(); ++i) {
        const osg::NodePtr node = kyNodeUtils::getNodeFromId(nodeIds_[i]);
        const auto geometry = osg::coreAs<osg::Geometry>(node);
        if (!geometry)
            continue;
        kyUVUtils::UVArray next;
        kyUVUtils::getUVValues(geometry, node, set_, next);
        auto command = std::make_unique<kyUVValueChangeCommand>(
            geometry, node, set_, std::move(prevUVs_[i]), std::move(next), nullptr);
        kyUndoStack::get(0).add(command.release());
    }
}

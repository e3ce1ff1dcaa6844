#pragma once

#include "OpenSG/Node.h"
#include "UVUtils/model/kyUVTypes.h"
#include "UVUtils/undo/UndoStep.h"

#include <QCoreApplication>

#include <vector>

/// Makes everything that happens to the UVs of some nodes while it lives one step of
/// kyUndoStack::get(0), with a kyUVValueChangeCommand for each node. Commands that are added in
/// between belong to the step as well.
///
/// Reads all UVs twice, and leaves both arrays to the commands. Through a compact mesh a slot that
/// is not there reads as zeros, so that an undo leaves it with zeros;
/// kyNoCompactUVValueChangeUndoGuard takes it away. A geometry that is not valid when it is read
/// counts as one without the slot.
class kyUVValueChangeUndoGuard : private UndoStep
{
    Q_DECLARE_TR_FUNCTIONS(kyUVValueChangeUndoGuard)

public:
    /// nodes  those without a geometry are passed over, and so are in the end those that are gone;
    ///        the step is there also without any
    kyUVValueChangeUndoGuard(const kyUndoString& string, const std::vector<osg::NodePtr>& nodes,
                             kyUVTypes::UVSet set);
    /// With the text "Change UV values".
    kyUVValueChangeUndoGuard(const std::vector<osg::NodePtr>& nodes, kyUVTypes::UVSet set);
    ~kyUVValueChangeUndoGuard();
    kyUVValueChangeUndoGuard(const kyUVValueChangeUndoGuard&) = delete;
    kyUVValueChangeUndoGuard& operator=(const kyUVValueChangeUndoGuard&) = delete;

private:
    std::vector<unsigned int> nodeIds_; ///< nodes are not kept alive
    kyUVTypes::UVSet set_;
    std::vector<std::vector<osg::Vector<float, 2>>> prevUVs_; ///< [node]
};

#pragma once

#include "OpenSG/Node.h"
#include "UVUtils/model/kyUVTypes.h"
#include "UVUtils/undo/UndoStep.h"

#include <QCoreApplication>

#include <map>
#include <vector>

/// As kyUVValueChangeUndoGuard, for UVs that are written to geometries and surfaces directly: no
/// compact mesh is built for it. Each surface of a shell, hidden ones too, gets a
/// kyNoCompactUVValueChangeCommand of its own.
///
/// Steps of one text over the same nodes that follow within a second become one.
///
/// A slot that is not there in the end is made, with zeros. An undo leads back to the values from
/// before, or takes the slot away where there was none.
class kyNoCompactUVValueChangeUndoGuard : private UndoStep
{
    Q_DECLARE_TR_FUNCTIONS(kyNoCompactUVValueChangeUndoGuard)

public:
    /// nodes  null ones are passed over, and so are in the end those that are gone; the step is
    ///        there also without any
    kyNoCompactUVValueChangeUndoGuard(const kyUndoString& string,
                                      const std::vector<osg::NodePtr>& nodes, kyUVTypes::UVSet set);
    /// With the text "Change UV values".
    kyNoCompactUVValueChangeUndoGuard(const std::vector<osg::NodePtr>& nodes, kyUVTypes::UVSet set);
    ~kyNoCompactUVValueChangeUndoGuard();
    kyNoCompactUVValueChangeUndoGuard(const kyNoCompactUVValueChangeUndoGuard&) = delete;
    kyNoCompactUVValueChangeUndoGuard& operator=(const kyNoCompactUVValueChangeUndoGuard&) = delete;

private:
    /// By the id of the node of each geometry; nodes are not kept alive.
    std::map<unsigned int, std::vector<osg::Vector<float, 2>>> prevUVs_;
    kyUVTypes::UVSet set_;
};

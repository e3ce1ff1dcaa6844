#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "UVUtils/model/kyUVTypes.h"
#include "UVUtils/undo/UncountedHandle.h"
#include "UndoUtils/kyUndoCommand.h"

#include <vector>

/// Scales the UVs of some vertices about a pivot; the first redo does it. Every undo and redo tells
/// "UVChanged", but without vertices nothing happens at all.
///
/// No UVs are kept: an undo scales by the reciprocal factors, and gives back the values before but
/// for rounding. A factor without a usable reciprocal (0, an infinity, NaN) can't be taken back:
/// the undo leaves that direction as it is. To flatten UVs undoably, wrap kyUVUtils::scaleUV in a
/// kyUVValueChangeUndoGuard.
///
/// A geometry or node that is gone counts as null; neither is kept alive.
class kyUVScaleChangeCommand : public kyUndoCommand
{
    Q_DECLARE_TR_FUNCTIONS(kyUVScaleChangeCommand)

public:
    /// ids  [count]  vertices, as for kyUVUtils::scaleUV; copied
    kyUVScaleChangeCommand(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                           kyUVTypes::UVSet set, const unsigned int* ids, unsigned int count,
                           const osg::Vector<float, 2>& pivot, float scaleU, float scaleV,
                           QUndoCommand* parent);
    ~kyUVScaleChangeCommand() override;

    void undo() override;
    void redo() override;

private:
    void apply(float scaleU, float scaleV) const;

    UncountedHandle<osg::Geometry> geometry_;
    UncountedHandle<osg::Node> node_;
    kyUVTypes::UVSet set_;
    std::vector<unsigned int> ids_;
    osg::Vector<float, 2> pivot_;
    float scaleU_;
    float scaleV_;
};

#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "UVUtils/model/kyUVTypes.h"
#include "UVUtils/undo/UncountedHandle.h"
#include "UndoUtils/kyUndoCommand.h"

#include <vector>

/// A change of the UVs of a geometry or shell that has happened already. The first redo does not
/// write; every undo and redo tells "UVChanged".
///
/// Values are those of kyUVUtils::getUVValues, over all active surfaces. Where their number is no
/// longer that of the vertices, or the geometry is no longer valid, undo and redo write nothing. A
/// geometry or node that is gone counts as null; neither is kept alive.
class kyUVValueChangeCommand : public kyUndoCommand
{
    Q_DECLARE_TR_FUNCTIONS(kyUVValueChangeCommand)

public:
    using UVArray = std::vector<osg::Vector<float, 2>>;

    /// prevUVs, nextUVs  [vertex] before and after; an empty array stands for a slot that is not
    ///                   there, and going to it removes the slot
    kyUVValueChangeCommand(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                           kyUVTypes::UVSet set, UVArray prevUVs, UVArray nextUVs,
                           QUndoCommand* parent);
    ~kyUVValueChangeCommand() override;

    void undo() override;
    void redo() override;

private:
    void change(const UVArray& uvs) const;

    bool firstRedo_ = true;
    UncountedHandle<osg::Geometry> geometry_;
    UncountedHandle<osg::Node> node_;
    kyUVTypes::UVSet set_;
    UVArray prevUVs_;
    UVArray nextUVs_;
};

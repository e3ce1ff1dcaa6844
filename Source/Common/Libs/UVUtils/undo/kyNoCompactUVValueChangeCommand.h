#pragma once

#include "OpenSG/Node.h"
#include "UVUtils/model/kyUVTypes.h"
#include "UVUtils/undo/UncountedHandle.h"
#include "UndoUtils/kyUndoCommand.h"

#include <vector>

/// A change of the UVs that one node's geometry, or all surfaces of its shell, hold themselves,
/// whatever a compact mesh makes of them. Every redo writes, the first one too, and every undo and
/// redo tells "UVChanged".
///
/// Changes of one node and slot in quick succession become one, which leads from the values before
/// the first to those after the last. Time counts from the first of them.
///
/// A node that is gone counts as null; it is not kept alive.
class kyNoCompactUVValueChangeCommand : public kyUndoCommand
{
    Q_DECLARE_TR_FUNCTIONS(kyNoCompactUVValueChangeCommand)

public:
    using UVArray = std::vector<osg::Vector<float, 2>>;

    /// prevUVs, nextUVs  [vertex] before and after, as kyUVUtils::getNoCompactUVValues gives them;
    ///                   an empty array stands for a slot that is not there, and going to it
    ///                   removes the slot, as kyUVUtils::removeUVSet does
    kyNoCompactUVValueChangeCommand(const osg::NodePtr& node, kyUVTypes::UVSet set, UVArray prevUVs,
                                    UVArray nextUVs, QUndoCommand* parent);
    ~kyNoCompactUVValueChangeCommand() override;

    void undo() override;
    void redo() override;
    bool mergeWith(const QUndoCommand* other) override;
    /// Is `other` one of the same node and slot, no further away than the response delta?
    bool canMergeWith(const QUndoCommand* other) const override;

private:
    void change(const UVArray& uvs) const;

    UncountedHandle<osg::Node> node_;
    kyUVTypes::UVSet set_;
    UVArray prevUVs_;
    UVArray nextUVs_;
};

#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "UVUtils/model/kyUVTypes.h"
#include "UVUtils/undo/UncountedHandle.h"
#include "UVUtils/undo/kyUVContinousChangeBase.h"

#include <vector>

/// A continuous edit of UVs. Every undo and redo tells "UVChanged".
///
/// Add the command to the stack, call lazyInit on what kyUndoStack::add returns, then change the
/// values. Before lazyInit undo and redo do nothing, so the redo of the stack does not either. In a
/// run the returned command is the oldest, which has its values already.
///
/// Values that no longer fit the geometry are not written. A geometry or node that is gone counts
/// as null; neither is kept alive.
class kyUVContinousChangeLazyCommand
    : public kyUVContinousChangeBase<kyUVContinousChangeLazyCommand>
{
    Q_DECLARE_TR_FUNCTIONS(kyUVContinousChangeLazyCommand)

public:
    /// selectionList  the temporary list that names the vertices to edit when lazyInit is called; a
    ///                null or empty one stands for all vertices
    /// allVertices    do not look at the list
    kyUVContinousChangeLazyCommand(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                   kyUVTypes::UVSet set, unsigned int selectionList,
                                   bool allVertices, QUndoCommand* parent);
    ~kyUVContinousChangeLazyCommand() override;

    static int commandId();
    int id() const override;
    /// Have both the same geometry and selection? Node and slot are not compared.
    bool isCompatible(const kyUVContinousChangeLazyCommand* other) const;

    /// Takes the UVs to go back to. Does nothing the second time.
    void lazyInit();

    void undo() override;
    void redo() override;

private:
    void toggle();
    bool isOfSomeVertices() const { return !allVertices_ && !ids_.empty(); }
    std::vector<osg::Vector<float, 2>> presentUVs() const;

    UncountedHandle<osg::Geometry> geometry_;
    UncountedHandle<osg::Node> node_;
    kyUVTypes::UVSet set_;
    unsigned int selectionList_;
    bool allVertices_;
    bool initialised_ = false;
    std::vector<unsigned int> ids_; ///< empty for all
    std::vector<osg::Vector<float, 2>> savedUVs_;
};

#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/Node.h"
#include "OpenSGUtils/kyTempIndicesData.h"
#include "UVUtils/model/kyTopologyBridge.h"
#include "UVUtils/model/kyUVTypes.h"
#include "UVUtils/undo/UncountedHandle.h"
#include "UndoUtils/kyUndoCommand.h"

#include <vector>

/// One change of topology (a cut, a sew, a step of a repair) on one geometry or shell, undone and
/// redone by replaying the records that the operation left behind.
///
/// The maker constructs the command, saves UVs and selections, runs the operation with
/// getTopoBridge(), drops the geometry's temporary lists where their ids have become stale, saves
/// UVs and selections again and adds the command to the stack. As the change has happened by then,
/// the first redo does nothing.
///
/// Undo and redo replay only onto the triangles that this command left. If those of the geometry
/// are others by now, or a surface was hidden or shown since, they do nothing, without a word; see
/// IndexChecksum.h for what is compared. Otherwise "VESelectionChanged" tells the application. An
/// operation that had nothing to work on leaves empty records, which fit no triangles.
///
/// A geometry or node that is gone counts as null; neither is kept alive.
class kyUVTopologyChangeCommand : public kyUndoCommand
{
    Q_DECLARE_TR_FUNCTIONS(kyUVTopologyChangeCommand)

public:
    using UVArray = std::vector<osg::Vector<float, 2>>;

    /// set                which slot the operation works on
    /// restoreUVs         undo and redo write the saved UVs of that slot
    /// restoreSelections  selections are saved and restored: the seeds of the selected islands, the
    ///                    selected vertices and the selected edges, and what is made from them
    kyUVTopologyChangeCommand(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                              kyUVTypes::UVSet set, bool restoreUVs, bool restoreSelections,
                              QUndoCommand* parent);
    ~kyUVTopologyChangeCommand() override;

    /// Where the operation writes its records.
    kyTopologyBridge* getTopoBridge() { return &bridge_; }
    const kyTopologyBridge* getTopoBridge() const { return &bridge_; }

    /// The UVs of all vertices before and after, as kyUVUtils::getUVValues gives them. Empty arrays
    /// are not written back.
    void setLastUVs(const UVArray& uvs) { lastUVs_ = uvs; }
    void setNextUVs(const UVArray& uvs) { nextUVs_ = uvs; }
    const UVArray& getLastUVs() const { return lastUVs_; }
    const UVArray& getNextUVs() const { return nextUVs_; }

    /// Appends the present selections to those before or after.
    void saveLastSelections() { saveSelections(lastSelections_); }
    void saveNextSelections() { saveSelections(nextSelections_); }

    void undo() override;
    void redo() override;

private:
    using Selections = std::vector<kyTempIndicesData>;

    void saveSelections(Selections& selections) const;
    void replay(const void* present, void* wanted, const UVArray& uvs,
                const Selections& selections) const;
    void applySelections(const Selections& selections) const;

    static const unsigned int sLabels[3]; ///< the lists that make up a selection

    bool firstRedo_ = true;
    UncountedHandle<osg::Geometry> geometry_;
    UncountedHandle<osg::Node> node_;
    kyUVTypes::UVSet set_;
    kyTopologyBridge bridge_;
    bool restoreUVs_;
    UVArray lastUVs_;
    UVArray nextUVs_;
    bool restoreSelections_;
    Selections lastSelections_;
    Selections nextSelections_;
};

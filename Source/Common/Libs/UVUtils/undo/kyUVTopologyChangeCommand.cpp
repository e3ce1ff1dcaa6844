#include "UVUtils/undo/kyUVTopologyChangeCommand.h"

#include "OpenSG/GeoTmpIndexEditInterface.h"
#include "OpenSGUtils/kyOpenSGUtils.h"
#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/kyUVSelection.h"
#include "UVUtils/model/ActiveSurfaces.h"
#include "UVUtils/model/TempIndexList.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/undo/IndexChecksum.h"

#include <utility>

namespace
{

/// Gives each active surface its part of the UVs of the node's vertices.
void writeToSurfaces(const osg::NodePtr& node, kyUVTypes::UVSet set, const kyUVUtils::UVArray& uvs)
{
    const std::vector<ActiveSurface> surfaces = activeSurfaces(node);
    if (vertexCountOf(surfaces) != uvs.size())
        return;
    for (const ActiveSurface& surface : surfaces) {
        const auto first = uvs.begin() + surface.firstId;
        kyUVUtils::setLocalUVs(surface.geometry, set, {first, first + surface.vertexCount});
    }
}

} // namespace

const unsigned int kyUVTopologyChangeCommand::sLabels[3] = {
    kyUVTypes::IslandSeeds, kyUVTypes::FreeVertices, kyUVTypes::SelectedEdges};

kyUVTopologyChangeCommand::kyUVTopologyChangeCommand(const osg::GeometryPtr& geometry,
                                                     const osg::NodePtr& node, kyUVTypes::UVSet set,
                                                     bool restoreUVs, bool restoreSelections,
                                                     QUndoCommand* parent)
    : kyUndoCommand({tr("UV Topology Change").toUtf8().constData(), tr("UV Editor")}, parent),
      geometry_(geometry), node_(node), set_(set), restoreUVs_(restoreUVs),
      restoreSelections_(restoreSelections)
{}

kyUVTopologyChangeCommand::~kyUVTopologyChangeCommand() = default;

void kyUVTopologyChangeCommand::undo()
{
    replay(bridge_.getNext(), bridge_.getPrev(), lastUVs_, lastSelections_);
}

void kyUVTopologyChangeCommand::redo()
{
    if (std::exchange(firstRedo_, false))
        return;
    replay(bridge_.getPrev(), bridge_.getNext(), nextUVs_, nextSelections_);
}

/// Goes from the state that one record leads to to that of the other.
void kyUVTopologyChangeCommand::replay(const void* present, void* wanted, const UVArray& uvs,
                                       const Selections& selections) const
{
    const osg::GeometryPtr geometry = geometry_.get();
    const osg::NodePtr node = node_.get();
    if (!hasIndicesOf(*static_cast<const kyTopologyData*>(present), geometry, node))
        return;
    kyUVUtils::applyTopology(geometry, node, set_, wanted);
    if (restoreUVs_ && !uvs.empty()) {
        // A mesh that could not follow is built anew from its surfaces. With the UVs of before,
        // vertices that the operation parts would be welded, and have one value for good.
        if (kyUVUtils::useCMesh(geometry) && CompactShellMesh::isBuildDue(geometry, set_))
            writeToSurfaces(node, set_, uvs);
        kyUVUtils::setUVValues(geometry, node, set_, uvs);
    }
    if (restoreSelections_ && !selections.empty())
        applySelections(selections);
    kyOpenSGUtils::call("VESelectionChanged", 0);
}

void kyUVTopologyChangeCommand::saveSelections(Selections& selections) const
{
    if (!restoreSelections_)
        return;
    // A null list too: what it was afterwards must not be left standing by an undo.
    for (const unsigned int number : sLabels)
        addData(selections, geometry_.get(), number, true);
}

void kyUVTopologyChangeCommand::applySelections(const Selections& selections) const
{
    const osg::GeometryPtr geometry = geometry_.get();
    for (const kyTempIndicesData& data : selections) {
        if (data.number == kyUVTypes::IslandSeeds) {
            kyUVSelection::selectIslandsBySeeds(geometry, node_.get(), set_, data.ids);
            continue;
        }
        osg::GeoTmpIndexEditInterface list(geometry, data.number);
        if (data.ids.empty()) {
            list.setNull();
        } else {
            list.setType(data.type);
            list.assign(data.ids);
        }
        list.commit();
        if (data.number == kyUVTypes::SelectedEdges)
            kyUVUtils::updateEdgeVSet(geometry);
    }
}

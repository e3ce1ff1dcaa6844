// The repair of a node and of what is below it that kyUVUtils offers, with what it tells about it.

#include "OpenSG/CoreAs.h"
#include "OpenSGAnim/kyAnimManager.h"
#include "OpenSGUtils/RemoveDegPolysGraphOp.h"
#include "UVUtils/model/NodeName.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/repair/OSGTopologyRepairGraphOp.h"
#include "UVUtils/repair/kyTopologyRepair.h"
#include "Utils/kyLog.h"
#include "Utils/kyString.h"

#include <string>

namespace
{

struct RepairCounts
{
    unsigned int removedTriangles = 0;
    unsigned int vertices = 0;
    unsigned int edges = 0;

    bool operator==(const RepairCounts&) const = default;
};

/// "1 edge", "2 edges", and nothing for 0.
std::string counted(unsigned int count, const char* singular, const char* plural)
{
    if (count == 0)
        return {};
    return std::to_string(count) + ' ' + (count == 1 ? singular : plural);
}

std::string textOf(const RepairCounts& counts)
{
    return kyString::join(
        {counted(counts.removedTriangles, "degenerate triangle", "degenerate triangles"),
         counted(counts.vertices, "non-manifold vertex", "non-manifold vertices"),
         counted(counts.edges, "non-manifold edge", "non-manifold edges")},
        ", ", true);
}

/// Triangles without an area go first: they are what often makes an edge singular.
RepairCounts repairSubtree(const osg::NodePtr& node, kyUVTypes::UVSet uvSet)
{
    osg::RemoveDegPolysGraphOp removal("RemoveDegPolys");
    removal.traverse(node);
    osg::TopologyRepairGraphOp repair("TopologyRepair");
    repair.setUVSet(uvSet);
    repair.traverse(node);
    return {removal.getRemovedPolysCount(), repair.getSingularVertices(),
            repair.getSingularEdges()};
}

} // namespace

bool kyUVUtils::repairTopology(const osg::NodePtr& node, kyUVTypes::UVSet uvSet)
{
    if (!node)
        return false;
    if (kyAnimManager::the()->hasVertexAnimation(node) && hasTopologyError(node)) {
        kyLog::error("Skipping node %s that has vertex animation and topology errors.",
                     nameForMessages(node));
        return false;
    }
    const RepairCounts counts = repairSubtree(node, uvSet);
    if (counts == RepairCounts())
        return true;
    restoreIslandSelection(node, uvSet); // vertices and triangles are others now
    kyLog::info("Fixed topology errors for node %s (%s)", nameForMessages(node),
                textOf(counts).c_str());
    return true;
}

bool kyUVUtils::hasTopologyError(const osg::NodePtr& node)
{
    const auto geometry = osg::coreAs<osg::Geometry>(node);
    if (!geometry)
        return false;
    if (osg::RemoveDegPolysGraphOp::hasDegenerateTriangles(geometry))
        return true;
    kyTopologyRepair repair(geometry, kyUVTypes::UVSet0);
    return !repair.findSingularVertices().empty() || !repair.findSingularEdges().empty();
}

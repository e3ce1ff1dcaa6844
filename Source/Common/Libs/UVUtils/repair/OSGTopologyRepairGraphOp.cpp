#include "UVUtils/repair/OSGTopologyRepairGraphOp.h"

#include "OpenSG/Log.h"
#include "OpenSGExt/kyShellUtils.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"
#include "UVUtils/repair/kyTopologyRepair.h"
#include "UVUtils/undo/kyUVTopologyChangeCommand.h"
#include "UndoUtils/kyUndoStack.h"

namespace osg
{

namespace
{

constexpr const char* defaultName = "TopologyRepair";

using Command = kyUVTopologyChangeCommand;

std::unique_ptr<Command> makeCommand(const GeometryPtr& geometry, const NodePtr& node,
                                     kyUVTypes::UVSet set, bool restoreUVs)
{
    return std::make_unique<Command>(geometry, node, set, restoreUVs, false, nullptr);
}

kyUVUtils::UVArray allUVs(const GeometryPtr& geometry, const NodePtr& node, kyUVTypes::UVSet set)
{
    kyUVUtils::UVArray uvs;
    kyUVUtils::getUVValues(geometry, node, set, uvs);
    return uvs;
}

} // namespace

TopologyRepairGraphOp::TopologyRepairGraphOp() : TopologyRepairGraphOp(defaultName) {}
TopologyRepairGraphOp::TopologyRepairGraphOp(const char* name) : SingleTypeGraphOp(name) {}
TopologyRepairGraphOp::TopologyRepairGraphOp(const TopologyRepairGraphOp& other) = default;
TopologyRepairGraphOp&
TopologyRepairGraphOp::operator=(const TopologyRepairGraphOp& other) = default;
TopologyRepairGraphOp::~TopologyRepairGraphOp() = default;

std::unique_ptr<GraphOp> TopologyRepairGraphOp::create() const
{
    return std::make_unique<TopologyRepairGraphOp>();
}

void TopologyRepairGraphOp::setParams(std::string /*params*/) {}

std::string TopologyRepairGraphOp::usage() const
{
    return {};
}

bool TopologyRepairGraphOp::travNodeEnter(const NodePtr& node)
{
    const auto geometry = coreAs<Geometry>(node);
    if (!geometry) {
        log(LogLevel::Notice, "OpenSG",
            "TopologyRepairGraphOp: travNodeEnter got a non-Geometry Node\n");
        return false;
    }
    if (kyShellUtils::isShell(geometry)) {
        _shellMapper.enterShell(geometry);
        return true; // its surfaces are yet to come
    }
    const unsigned int countOnEntry = vertexCountOf(geometry);
    kyTopologyRepair repair(geometry, _uvSet);
    fixVertices(repair, geometry, node);
    fixEdges(repair, geometry, node);
    _shellMapper.leaveGeo(node, geometry, countOnEntry);
    return true;
}

void TopologyRepairGraphOp::fixVertices(kyTopologyRepair& repair, const GeometryPtr& geometry,
                                        const NodePtr& node)
{
    const std::vector<unsigned int> vertices = repair.findSingularVertices();
    if (vertices.empty())
        return;
    _shellMapper.preGeoVertexDuplication();
    auto command = makeCommand(geometry, node, _uvSet, false);
    repair.fixSingularVertices(vertices, command->getTopoBridge());
    kyUndoStack::get(0).add(command.release());
    _singularVertices += static_cast<unsigned int>(vertices.size());
}

/// Moves UVs as well, so the command keeps those of before and after.
void TopologyRepairGraphOp::fixEdges(kyTopologyRepair& repair, const GeometryPtr& geometry,
                                     const NodePtr& node)
{
    const FlatEdgeList edges = repair.findSingularEdges();
    if (edges.empty())
        return;
    _shellMapper.preGeoVertexDuplication();
    auto command = makeCommand(geometry, node, _uvSet, true);
    command->setLastUVs(allUVs(geometry, node, _uvSet));
    repair.fixSingularEdges(edges, command->getTopoBridge());
    command->setNextUVs(allUVs(geometry, node, _uvSet));
    kyUndoStack::get(0).add(command.release());
    _singularEdges += static_cast<unsigned int>(edges.size() / 2);
}

bool TopologyRepairGraphOp::travNodeLeave(const NodePtr& node)
{
    const auto geometry = coreAs<Geometry>(node);
    if (kyShellUtils::isShell(geometry) && _shellMapper.is(geometry))
        _shellMapper.leaveShell();
    return true;
}

} // namespace osg

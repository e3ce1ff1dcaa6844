#pragma once

#include "OpenSG/Geometry.h"
#include "OpenSG/GraphOp.h"
#include "OpenSGUtils/kyShellSelectionMapper.h"
#include "UVUtils/model/kyUVTypes.h"

class kyTopologyRepair;

namespace osg
{

/// Repairs all geometries that it walks over with kyTopologyRepair: for each first the singular
/// vertices, then the singular edges that are there after that, once each. Geometries that aren't
/// fit are left alone. The lists of a shell keep naming what they named.
///
/// Each repair of vertices and each of edges is a command on kyUndoStack::get(0), so up to two for
/// a geometry. They belong to the geometry itself, be it a surface of a shell: an undo works only
/// with kyUVUtils::setUseCompactMesh(false). It brings back vertices, triangles and UVs, not the
/// temporary lists. Nothing is added where nothing was found.
class TopologyRepairGraphOp : public SingleTypeGraphOp<Geometry>
{
public:
    TopologyRepairGraphOp();
    explicit TopologyRepairGraphOp(const char* name);
    TopologyRepairGraphOp(const TopologyRepairGraphOp& other);
    TopologyRepairGraphOp& operator=(const TopologyRepairGraphOp& other);
    ~TopologyRepairGraphOp() override;

    static const char* getClassname() { return "TopologyRepairGraphOp"; }

    [[nodiscard]] std::unique_ptr<GraphOp> create() const override;
    /// There are none.
    void setParams(std::string params) override;
    [[nodiscard]] std::string usage() const override;

    /// False, with a line in the log, for a node whose core is no geometry.
    bool travNodeEnter(const NodePtr& node) override;
    bool travNodeLeave(const NodePtr& node) override;

    /// The slot in which the sides of a repaired edge move apart; slot 0 at the start.
    void setUVSet(kyUVTypes::UVSet uvSet) { _uvSet = uvSet; }

    // How many were fixed so far, by all walks together.

    [[nodiscard]] unsigned int getSingularVertices() const { return _singularVertices; }
    [[nodiscard]] unsigned int getSingularEdges() const { return _singularEdges; }

private:
    void fixVertices(kyTopologyRepair& repair, const GeometryPtr& geometry, const NodePtr& node);
    void fixEdges(kyTopologyRepair& repair, const GeometryPtr& geometry, const NodePtr& node);

    unsigned int _singularVertices = 0;
    unsigned int _singularEdges = 0;
    kyShellSelectionMapper _shellMapper;
    kyUVTypes::UVSet _uvSet = kyUVTypes::UVSet0;
};

} // namespace osg

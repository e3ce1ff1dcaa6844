// The life of a lattice: its session, the deformers of geometries, and their meta data.

#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/editing/LatticeDeformer.h"
#include "UVUtils/editing/LatticeGrid.h"
#include "UVUtils/editing/MarkedVertices.h"
#include "UVUtils/model/SortAndDropRepeats.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"

#include <algorithm>
#include <memory>
#include <span>

namespace
{

using osg::Vec2f;
using Ids = std::vector<unsigned int>;

LatticeGrid firstGrid()
{
    LatticeGrid grid;
    grid.setUp(20, 20, Vec2f(0.F, 0.F), Vec2f(1.F, 1.F));
    return grid;
}

/// The mesh, the work geometry and the UVs of a deformer; without UVs where there is nothing to
/// work on.
std::unique_ptr<LatticeDeformer> prepare(const osg::GeometryPtr& geometry, const osg::NodePtr& node,
                                         kyUVTypes::UVSet uvSet)
{
    auto deformer = std::make_unique<LatticeDeformer>();
    deformer->geometry = geometry;
    deformer->node = node;
    deformer->mesh = CompactShellMesh::getCMesh(geometry, node, uvSet);
    if (kyUVUtils::useCMesh(geometry) && !deformer->mesh)
        return deformer;
    deformer->workGeometry = deformer->mesh ? deformer->mesh->getGeomPtr() : geometry;
    deformer->uvs = uvSlot(deformer->workGeometry.get(), uvSet);
    return deformer;
}

/// Vertices of the work geometry, ascending, each once, as far as they have UVs.
Ids workIdsOf(const LatticeDeformer& deformer, std::span<const unsigned int> ids)
{
    Ids workIds;
    if (deformer.mesh) {
        workIds = MarkedVertices(*deformer.mesh, ids).compactIds();
    } else {
        workIds.assign(ids.begin(), ids.end());
        sortAndDropRepeats(workIds);
    }
    const auto end = std::ranges::lower_bound(workIds, deformer.uvs->getSize());
    workIds.erase(end, workIds.end());
    return workIds;
}

LatticeStart startAt(std::span<const Vec2f> uvs, Ids ids)
{
    LatticeStart start;
    start.uvs.reserve(ids.size());
    for (const unsigned int id : ids)
        start.uvs.push_back(uvs[id]);
    start.ids = std::move(ids);
    return start;
}

} // namespace

LatticeGrid& kyUVUtils::latticeGrid()
{
    static LatticeGrid grid = firstGrid();
    return grid;
}

bool kyUVUtils::startLatticeSession(unsigned int resU, unsigned int resV,
                                    const osg::Vector<float, 2>& min,
                                    const osg::Vector<float, 2>& max, unsigned int& sessionId)
{
    if (instance().latticeUserCount_ != 0 || !LatticeGrid::isPossible(resU, resV, min, max))
        return false;
    sessionId = ++instance().latticeSessionId_;
    latticeGrid().setUp(resU, resV, min, max);
    return true;
}

void* kyUVUtils::getLatticeDeformer(unsigned int sessionId, const osg::GeometryPtr& geometry,
                                    const osg::NodePtr& node, kyUVTypes::UVSet uvSet,
                                    const unsigned int* ids, unsigned int count)
{
    if (sessionId != instance().latticeSessionId_ || !isValidGeometry(geometry, node, false) ||
        !ids || count == 0)
        return nullptr;
    std::unique_ptr<LatticeDeformer> deformer = prepare(geometry, node, uvSet);
    if (!deformer->uvs)
        return nullptr;
    Ids workIds = workIdsOf(*deformer, std::span(ids, count));
    if (workIds.empty())
        return nullptr;
    deformer->start = startAt(deformer->uvs->values(), std::move(workIds));
    ++instance().latticeUserCount_;
    return deformer.release();
}

void* kyUVUtils::getMetaDataofLatticeDeformer(void* deformer)
{
    if (!deformer)
        return nullptr;
    return new LatticeStart(static_cast<const LatticeDeformer*>(deformer)->start);
}

bool kyUVUtils::setMetaDataofLatticeDeformer(void* deformer, void* metaData)
{
    if (!deformer || !metaData)
        return false;
    auto& target = *static_cast<LatticeDeformer*>(deformer);
    const auto& start = *static_cast<const LatticeStart*>(metaData);
    if (!target.uvs || start.ids.size() != start.uvs.size() ||
        std::ranges::any_of(start.ids,
                            [&](unsigned int id) { return id >= target.uvs->getSize(); }))
        return false;
    target.start = start;
    return true;
}

void kyUVUtils::destroyLatticeMetaData(void*& metaData)
{
    delete static_cast<LatticeStart*>(metaData);
    metaData = nullptr;
}

bool kyUVUtils::finishLatticeDeformer(void*& deformer)
{
    if (!deformer || instance().latticeUserCount_ == 0)
        return false;
    --instance().latticeUserCount_;
    delete static_cast<LatticeDeformer*>(deformer);
    deformer = nullptr;
    return true;
}

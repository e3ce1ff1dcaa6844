// UVs bent by a lattice.

#include "OpenSG/ChangeNotice.h"
#include "UVUtils/compactmesh/CopyUVs.h"
#include "UVUtils/compactmesh/QuietMesh.h"
#include "UVUtils/editing/LatticeDeformer.h"
#include "UVUtils/editing/LatticeSurface.h"
#include "UVUtils/model/UVSlot.h"
#include "UVUtils/model/kyUVUtils.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/task_group.h>

#include <algorithm>
#include <span>

namespace
{

using osg::Vec2f;
constexpr unsigned int Block = LatticeSurface::PointCount;

/// What is no number counts as 0.
double limitedTo1(float amount)
{
    return amount > 0 ? std::min(amount, 1.F) : 0.F;
}

/// Up to a block of UVs for the surface. The lanes behind them take the first one.
LatticeSurface::Points loaded(std::span<const Vec2f> uvs)
{
    LatticeSurface::Points points;
    for (unsigned int i = 0; i < Block; ++i) {
        const Vec2f& uv = uvs[i < uvs.size() ? i : 0];
        points.u[i / LatticeSurface::LanesPerRegister][i % LatticeSurface::LanesPerRegister] =
            double{uv.x()};
        points.v[i / LatticeSurface::LanesPerRegister][i % LatticeSurface::LanesPerRegister] =
            double{uv.y()};
    }
    return points;
}

/// An amount of 0 gives the start also where the surface has left the range of numbers.
float blended(double bent, float start, double amount)
{
    return amount == 0 ? start : static_cast<float>((bent - start) * amount + start);
}

/// Bends a block of UVs or less and writes each to its id.
void bend(const LatticeSurface& surface, double amount, std::span<const unsigned int> ids,
          std::span<const Vec2f> starts, std::span<Vec2f> uvs)
{
    const LatticeSurface::Points bent = surface.evaluate(loaded(starts));
    for (unsigned int i = 0; i < starts.size(); ++i) {
        const unsigned int k = i / LatticeSurface::LanesPerRegister;
        const unsigned int lane = i % LatticeSurface::LanesPerRegister;
        uvs[ids[i]] = Vec2f(blended(bent.u[k][lane], starts[i].x(), amount),
                            blended(bent.v[k][lane], starts[i].y(), amount));
    }
}

/// On all threads. No two of the ids are equal, so each UV is written by one thread.
void bendAll(const LatticeSurface& surface, double amount, const LatticeStart& start,
             std::span<Vec2f> uvs)
{
    // A mesh that was built anew since may have less vertices.
    const auto end = std::ranges::lower_bound(start.ids, uvs.size());
    const std::span ids(start.ids.begin(), end);
    const std::span starts(start.uvs);
    tbb::task_group_context context;
    tbb::parallel_for(
        tbb::blocked_range<unsigned int>(0, static_cast<unsigned int>(ids.size()), 1),
        [&](const tbb::blocked_range<unsigned int>& range) {
            for (unsigned int i = range.begin(); i < range.end(); i += Block) {
                const unsigned int count = std::min(Block, range.end() - i);
                bend(surface, amount, ids.subspan(i, count), starts.subspan(i, count), uvs);
            }
        },
        tbb::auto_partitioner(), context);
}

} // namespace

bool kyUVUtils::applyLatticeDeform(void* deformer, kyUVTypes::UVSet uvSet, float amount,
                                   const std::vector<osg::Vector<float, 2>>& controlPoints)
{
    if (!deformer)
        return false;
    const auto& target = *static_cast<const LatticeDeformer*>(deformer);
    const LatticeGrid& grid = latticeGrid();
    if (controlPoints.size() == std::size_t{grid.resU} * grid.resV)
        bendAll(LatticeSurface(grid, controlPoints), limitedTo1(amount), target.start,
                target.uvs->values());
    osg::notifyChanged(target.uvs, target.workGeometry, uvSlotMask(uvSet));
    if (target.mesh) {
        const QuietMesh quiet(target.mesh);
        copyUVsToSurfaces(*target.mesh, target.geometry.get(), target.node.get(), uvSet);
    }
    return true;
}

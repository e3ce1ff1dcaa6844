// How the corners of a target find their UVs on the source.

#include "MeshUtils/kyGeoSampler.h"
#include "UVUtils/repair/SeamWalker.h"
#include "UVUtils/repair/TransferTarget.h"
#include "UVUtils/repair/kyTransferGeoProperties.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>
#include <tbb/task_group.h>

#include <limits>
#include <optional>

namespace
{

/// Calls `body` with all numbers below an end, on all threads; each run of them with one hit that
/// goes from call to call. Searches go faster from the answer of one nearby.
template <class Body>
void forAllInRuns(std::size_t end, const Body& body)
{
    tbb::task_group_context context;
    tbb::parallel_for(
        tbb::blocked_range<std::size_t>(0, end),
        [&body](const tbb::blocked_range<std::size_t>& run) {
            kyPointOnGeometry hit;
            for (std::size_t i = run.begin(); i < run.end(); ++i)
                body(static_cast<unsigned int>(i), hit);
        },
        tbb::auto_partitioner(), context);
}

} // namespace

std::vector<osg::Vec2f> kyTransferGeoProperties::sampleCorners(const TransferTarget& target,
                                                               const osg::GeometryPtr& source,
                                                               kyUVTypes::UVSet uvSet) const
{
    const std::vector<VertexSample> samples = sampleVertices(target, source, uvSet);
    std::vector<osg::Vec2f> uvOfCorner(target.triangles.size());
    forAllInRuns(target.triangles.size() / 3, [&](unsigned int triangle, kyPointOnGeometry& hit) {
        sampleTriangle(target, triangle, source, samples, uvSet, hit, uvOfCorner);
    });
    return uvOfCorner;
}

/// The corners at a vertex all begin with the same search, so it is made once.
std::vector<kyTransferGeoProperties::VertexSample> kyTransferGeoProperties::sampleVertices(
    const TransferTarget& target, const osg::GeometryPtr& source, kyUVTypes::UVSet uvSet) const
{
    std::vector<VertexSample> samples(target.positions.size());
    forAllInRuns(samples.size(), [&](unsigned int vertex, kyPointOnGeometry& hit) {
        if (target.cornersOfVertex[vertex].empty())
            return;
        getAssociatedPoint(source, target.positions[vertex], target.normalAt(vertex), hit);
        samples[vertex] = {hit, hit.getPosition(), hit.getUV(static_cast<unsigned int>(uvSet))};
    });
    return samples;
}

void kyTransferGeoProperties::sampleTriangle(const TransferTarget& target, unsigned int triangle,
                                             const osg::GeometryPtr& source,
                                             const std::vector<VertexSample>& samples,
                                             kyUVTypes::UVSet uvSet, kyPointOnGeometry& centerHit,
                                             std::vector<osg::Vec2f>& uvOfCorner) const
{
    constexpr float third = 0.33333334F;
    const std::size_t first = 3 * std::size_t{triangle};
    const std::span<const unsigned int> vertices = target.triangles.subspan(first, 3);
    const osg::Pnt3f& p0 = target.positions[vertices[0]];
    const osg::Pnt3f& p1 = target.positions[vertices[1]];
    const osg::Pnt3f& p2 = target.positions[vertices[2]];
    const osg::Pnt3f center((p0.subZero() + p1.subZero() + p2.subZero()) * third);
    const osg::Vec3f normal = (p1 - p0).cross(p2 - p0).normalized();
    centerHit = samples[vertices[0]].hit; // near the answer
    getAssociatedPoint(source, center, normal, centerHit);
    const osg::Pnt3f start = centerHit.getPosition();
    for (unsigned int k = 0; k < 3; ++k) {
        const VertexSample& sample = samples[vertices[k]];
        uvOfCorner[first + k] = sample.uv;
        if (!sample.hit.geometry || sample.hit.geometry != centerHit.geometry ||
            sample.hit.triangle == centerHit.triangle)
            continue;
        const osg::Vec3f up = target.normalAt(vertices[k]) + normal;
        if (const auto corrected = correctHit(centerHit, start, up, sample))
            uvOfCorner[first + k] = corrected->getUV(static_cast<unsigned int>(uvSet));
    }
}

std::optional<kyPointOnGeometry>
kyTransferGeoProperties::correctHit(const kyPointOnGeometry& centerHit, const osg::Pnt3f& start,
                                    const osg::Vec3f& up, const VertexSample& sample) const
{
    const osg::Pnt3f& end = sample.position;
    const int endTriangle = sample.hit.triangle;
    // It stands on the surface along the way.
    const osg::Plane plane(up.cross(end - start), start);
    kyPointOnGeometry edgePoint = centerHit;
    if (walker_->findPath(start, centerHit.triangle, end, endTriangle, &plane, &edgePoint))
        return std::nullopt;
    // Where the plane leads onto a seam there may be a way around its end.
    if (walker_->findPath(edgePoint.getPosition(), edgePoint.triangle, end, endTriangle, nullptr,
                          &edgePoint))
        return std::nullopt;
    return edgePoint;
}

bool kyTransferGeoProperties::getAssociatedPoint(const osg::GeometryPtr& geometry,
                                                 const osg::Pnt3f& point, const osg::Vec3f& normal,
                                                 kyPointOnGeometry& out) const
{
    return (sampleMethod_ == AlongNormal &&
            getClosestPointAlongNormal(geometry, point, normal, out)) ||
           getClosestPoint(geometry, point, out, -1);
}

bool kyTransferGeoProperties::getClosestPoint(const osg::GeometryPtr& geometry,
                                              const osg::Pnt3f& point, kyPointOnGeometry& out,
                                              int startTriangle) const
{
    if (bvh_ && (sampleMethod_ == AlongNormal || sampleMethod_ == ClosestBVH))
        return bvh_->findClosestPoint(point, out);
    if (octree_ && sampleMethod_ == ClosestOctree)
        return octree_->getClosestPoint(point, out);
    return kyGeoSampler::getClosestPoint(geometry, point, out, startTriangle);
}

bool kyTransferGeoProperties::getClosestPointAlongNormal(const osg::GeometryPtr& /*geometry*/,
                                                         const osg::Pnt3f& point,
                                                         const osg::Vec3f& normal,
                                                         kyPointOnGeometry& out) const
{
    if (!bvh_)
        return false;
    const osg::Pnt3f origin = point + normal * offsetAlongNormal_;
    const osg::Vec3f direction = normal.normalized();
    float distance = std::numeric_limits<float>::max();
    const bool isHitBelow = bvh_->castRay(origin, -direction, distance, out, distance);
    kyPointOnGeometry above;
    const bool isHitAbove = bvh_->castRay(origin, direction, distance, above, distance);
    if (isHitAbove)
        out = above; // which is nearer
    return isHitBelow || isHitAbove;
}

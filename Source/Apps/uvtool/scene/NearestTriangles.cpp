#include "scene/NearestTriangles.h"

#include "solver/SolverGeometry.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <algorithm>
#include <span>

namespace uvtool
{
namespace
{

/// All surfaces of a scene, their vertices one after the other as its triangles count them.
std::vector<Vec3f> positionsOf(const SceneGeometry& scene)
{
    std::vector<Vec3f> positions;
    positions.reserve(scene.vertexCount);
    scene.forEachSurface([&positions](const osg::GeometryPtr& surface) {
        for (const osg::Pnt3f& p : surface->getPositions()->getValues())
            positions.push_back({p[0], p[1], p[2]});
    });
    return positions;
}

osg::Pnt3f middleOf(std::span<const std::uint32_t> triangle, const std::vector<Vec3f>& positions)
{
    osg::Pnt3f middle;
    for (unsigned int k = 0; k < 3; ++k)
        middle[k] =
            (positions[triangle[0]][k] + positions[triangle[1]][k] + positions[triangle[2]][k]) /
            3.0F;
    return middle;
}

} // namespace

NearestTriangleSearch::NearestTriangleSearch(const SceneGeometry& source)
    : source_(makeGeometry({positionsOf(source), source.triangles, {}}, 0))
{
    query_.build(source_);
}

NearestTriangles NearestTriangleSearch::of(const SceneGeometry& target) const
{
    const std::vector<Vec3f> positions = positionsOf(target);
    NearestTriangles nearest;
    nearest.triangles.resize(target.triangleCount());
    std::vector<float> distances(target.triangleCount());
    tbb::parallel_for(tbb::blocked_range<std::size_t>(0, target.triangleCount()),
                      [&](const tbb::blocked_range<std::size_t>& run) {
                          kyPointOnGeometry hit;
                          for (std::size_t t = run.begin(); t < run.end(); ++t) {
                              const osg::Pnt3f middle = middleOf(
                                  std::span(target.triangles).subspan(3 * t, 3), positions);
                              if (!query_.findClosestPoint(middle, hit))
                                  continue;
                              nearest.triangles[t] = static_cast<std::uint32_t>(hit.triangle);
                              distances[t] = (hit.getPosition() - middle).length();
                          }
                      });
    if (!distances.empty())
        nearest.distance = *std::max_element(distances.begin(), distances.end());
    return nearest;
}

} // namespace uvtool

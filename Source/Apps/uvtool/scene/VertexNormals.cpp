#include "scene/VertexNormals.h"

#include "document/Transform.h"
#include "document/Vec3Math.h"

#include <span>
#include <utility>
#include <vector>

namespace uvtool
{
namespace
{

void add(const Vec3d& normal, Vec3d& sum)
{
    for (std::size_t k = 0; k < 3; ++k)
        sum[k] += normal[k];
}

/// [vertex] as long as twice the area of the triangles around.
std::vector<Vec3d> areaNormals(const std::vector<osg::Pnt3f>& positions,
                               std::span<const unsigned int> triangles)
{
    std::vector<Vec3d> sums(positions.size());
    const auto at = [&](std::size_t corner) {
        const osg::Pnt3f& p = positions[triangles[corner]];
        return Vec3d{p[0], p[1], p[2]};
    };
    for (std::size_t i = 0; i + 3 <= triangles.size(); i += 3) {
        const Vec3d normal = areaNormal(at(i), at(i + 1), at(i + 2));
        for (std::size_t k = 0; k < 3; ++k)
            add(normal, sums[triangles[i + k]]);
    }
    return sums;
}

/// [vertex] of those in the file; zeros where it has none.
std::vector<Vec3d> fileNormals(const DocumentGeometry& geometry, std::size_t vertexCount,
                               std::span<const unsigned int> triangles)
{
    std::vector<Vec3d> sums(vertexCount);
    for (std::size_t i = 0; i < triangles.size(); ++i)
        if (geometry.normals.has(geometry.triangles[i]))
            add(normalToScene(geometry.toWorld, geometry.normals.at(geometry.triangles[i])),
                sums[triangles[i]]);
    return sums;
}

std::vector<osg::Vec3f> normalsOf(const DocumentGeometry& geometry, const osg::GeometryPtr& surface)
{
    const std::vector<unsigned int> triangles = surface->getIndices()->getValues();
    const std::vector<osg::Pnt3f> positions = surface->getPositions()->getValues();
    const std::vector<Vec3d> byArea = areaNormals(positions, triangles);
    const std::vector<Vec3d> inFile = fileNormals(geometry, positions.size(), triangles);
    std::vector<osg::Vec3f> normals;
    normals.reserve(positions.size());
    for (std::size_t v = 0; v < positions.size(); ++v) {
        const Vec3d own = normalised(inFile[v]);
        const Vec3d n = own == Vec3d{} ? normalised(byArea[v]) : own;
        const double sign = dot(n, byArea[v]) < 0.0 ? -1.0 : 1.0;
        normals.emplace_back(static_cast<float>(sign * n[0]), static_cast<float>(sign * n[1]),
                             static_cast<float>(sign * n[2]));
    }
    return normals;
}

} // namespace

void addVertexNormals(const Document& document, const SceneGeometry& scene)
{
    std::size_t next = 0;
    scene.forEachSurface([&](const osg::GeometryPtr& surface) {
        while (!scene.surfaces[next].fault.empty())
            ++next;
        const auto normals = osg::GeoNormals3f::create();
        normals->takeValues(normalsOf(document.geometries[scene.surfaces[next++].number], surface));
        surface->setNormals(normals);
    });
}

} // namespace uvtool

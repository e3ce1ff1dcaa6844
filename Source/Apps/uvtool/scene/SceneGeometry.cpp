#include "scene/SceneGeometry.h"

#include "solver/SolverGeometry.h"

#include "OpenSGExt/kyGeoUtils.h"

namespace uvtool
{
namespace
{

/// The vertices of a geometry of the document.
struct SurfaceVertices
{
    std::vector<std::uint32_t> triangles;      ///< [3 * n] vertices
    std::vector<std::uint32_t> cornerOfVertex; ///< [vertex] the first polygon corner that is one
    std::vector<Vec3d> positions;              ///< [vertex] in the scene
};

SurfaceVertices placeVertices(const DocumentGeometry& geometry, CornerVertices corners)
{
    SurfaceVertices vertices;
    vertices.cornerOfVertex.reserve(corners.vertexCount);
    for (std::size_t i = 0; i < corners.vertexOfCorner.size(); ++i)
        if (corners.vertexOfCorner[i] == vertices.cornerOfVertex.size())
            vertices.cornerOfVertex.push_back(geometry.triangles[i]);
    vertices.triangles = std::move(corners.vertexOfCorner);
    vertices.positions = scenePositionsOfCorners(geometry, vertices.cornerOfVertex);
    return vertices;
}

SolverFrame commonFrame(const std::vector<SurfaceVertices>& surfaces)
{
    std::vector<Vec3d> points;
    for (const SurfaceVertices& surface : surfaces)
        points.insert(points.end(), surface.positions.begin(), surface.positions.end());
    return SolverFrame(points);
}

std::vector<Vec2f> uvsOf(const DocumentGeometry& geometry, std::size_t slot,
                         const std::vector<std::uint32_t>& cornerOfVertex)
{
    const CornerAttribute<Vec2f>& uvs = geometry.uvs[slot];
    if (!uvs.exists())
        return {};
    std::vector<Vec2f> values;
    values.reserve(cornerOfVertex.size());
    for (const std::uint32_t corner : cornerOfVertex)
        values.push_back(uvs.has(corner) ? uvs.at(corner) : Vec2f{});
    return values;
}

osg::RefPtr<osg::Geometry> makeCore(const DocumentGeometry& geometry, std::size_t slot,
                                    const SurfaceVertices& vertices, const SolverFrame& frame)
{
    std::vector<Vec3f> positions;
    positions.reserve(vertices.positions.size());
    for (const Vec3d& position : vertices.positions)
        positions.push_back(frame.toFrame(position));
    const std::vector<Vec2f> uvs = uvsOf(geometry, slot, vertices.cornerOfVertex);
    return makeGeometry({positions, vertices.triangles, uvs}, slot);
}

/// Adds a surface under the scene's node, or as the scene's node where that has no core yet.
void addSurface(const DocumentGeometry& geometry, std::size_t number, std::size_t slot,
                const SurfaceVertices& vertices, const SolverFrame& frame, SceneGeometry& scene)
{
    const osg::RefPtr<osg::Geometry> core = makeCore(geometry, slot, vertices, frame);
    if (scene.isShell) {
        const osg::NodePtr child = osg::Node::create();
        child->setCore(core);
        scene.node->addChild(child);
    } else {
        scene.node->setCore(core);
    }
    const unsigned int errors = kyGeoUtils::checkGeometryCore(core, true);
    scene.surfaces.push_back(
        {number, geometry.uvs[slot].exists(), kyGeoUtils::getGeometryErrorString(errors)});
    if (errors != 0)
        return;
    for (const std::uint32_t vertex : vertices.triangles)
        scene.triangles.push_back(static_cast<std::uint32_t>(scene.vertexCount) + vertex);
    for (std::uint32_t t = 0; t < geometry.triangleCount(); ++t)
        scene.sourceOfTriangle.push_back({static_cast<std::uint32_t>(number), t});
    scene.vertexCount += vertices.cornerOfVertex.size();
}

VerticesOf distinctCornersOf(const Document& document)
{
    return [&document](std::size_t number) { return distinctCorners(document.geometries[number]); };
}

std::vector<SurfaceVertices> surfacesOf(const Document& document,
                                        std::span<const std::size_t> numbers,
                                        const VerticesOf& verticesOf)
{
    std::vector<SurfaceVertices> surfaces;
    surfaces.reserve(numbers.size());
    for (const std::size_t number : numbers)
        surfaces.push_back(placeVertices(document.geometries[number], verticesOf(number)));
    return surfaces;
}

SceneGeometry sceneOf(const Document& document, std::span<const std::size_t> numbers,
                      std::size_t slot, bool isShell, const std::vector<SurfaceVertices>& surfaces,
                      const SolverFrame& frame)
{
    SceneGeometry scene;
    scene.node = osg::Node::create();
    scene.isShell = isShell;
    scene.exponent = frame.exponent();
    if (isShell) {
        const osg::GeometryPtr shell = osg::Geometry::create();
        shell->setGeometryType(osg::Geometry::ShellType);
        scene.node->setCore(shell);
    }
    for (std::size_t i = 0; i < numbers.size(); ++i)
        addSurface(document.geometries[numbers[i]], numbers[i], slot, surfaces[i], frame, scene);
    return scene;
}

} // namespace

void SceneGeometry::forEachSurface(const std::function<void(const osg::GeometryPtr&)>& use) const
{
    for (std::size_t i = 0; i < surfaces.size(); ++i) {
        if (!surfaces[i].fault.empty())
            continue;
        const osg::NodePtr surface = isShell ? node->getChild(static_cast<unsigned int>(i)) : node;
        use(osg::dcast<osg::Geometry>(surface->getCore()));
    }
}

SceneGeometry makeScene(const Document& document, std::span<const std::size_t> numbers,
                        std::size_t slot, bool isShell, const VerticesOf& verticesOf)
{
    const std::vector<SurfaceVertices> surfaces = surfacesOf(document, numbers, verticesOf);
    return sceneOf(document, numbers, slot, isShell, surfaces, commonFrame(surfaces));
}

SceneGeometry makeScene(const Document& document, std::span<const std::size_t> numbers,
                        std::size_t slot, bool isShell, const VerticesOf& verticesOf,
                        const SolverFrame& frame)
{
    return sceneOf(document, numbers, slot, isShell, surfacesOf(document, numbers, verticesOf),
                   frame);
}

SceneGeometry makePlainScene(const Document& document, std::size_t number, std::size_t slot)
{
    return makeScene(document, std::span(&number, 1), slot, false, distinctCornersOf(document));
}

SceneGeometry makeShellScene(const Document& document, std::span<const std::size_t> numbers,
                             std::size_t slot)
{
    return makeScene(document, numbers, slot, true, distinctCornersOf(document));
}

} // namespace uvtool

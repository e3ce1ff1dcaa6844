#include "projection/ProjectionScene.h"

#include "mesh/SolverFrame.h"
#include "solver/SolverGeometry.h"

#include "OpenSG/Transform3D.h"
#include "UVUtils/model/kyUVUtils.h"

namespace uvtool
{
namespace
{

/// The polygon corner at which each vertex is first used.
std::vector<std::uint32_t> cornersOfVertices(const DocumentGeometry& geometry,
                                             const CornerVertices& vertices)
{
    std::vector<std::uint32_t> corners;
    corners.reserve(vertices.vertexCount);
    for (std::size_t i = 0; i < vertices.vertexOfCorner.size(); ++i)
        if (vertices.vertexOfCorner[i] == corners.size())
            corners.push_back(geometry.triangles[i]);
    return corners;
}

osg::RefPtr<osg::Geometry> makeCore(const DocumentGeometry& geometry, bool isInScene)
{
    const CornerVertices vertices = cornersByPosition(geometry);
    const std::vector<std::uint32_t> corners = cornersOfVertices(geometry, vertices);
    std::vector<Vec3f> positions;
    positions.reserve(corners.size());
    for (const Vec3d& p : isInScene ? scenePositionsOfCorners(geometry, corners)
                                    : positionsOfCorners(geometry, corners))
        positions.push_back(
            {static_cast<float>(p[0]), static_cast<float>(p[1]), static_cast<float>(p[2])});
    return makeGeometry({positions, vertices.vertexOfCorner, {}}, 0);
}

osg::Matrix matrixOf(const std::array<double, 16>& columns)
{
    osg::Matrix matrix;
    for (unsigned column = 0; column < 4; ++column)
        for (unsigned row = 0; row < 4; ++row)
            matrix(row, column) = static_cast<float>(columns[4 * column + row]);
    return matrix;
}

osg::NodePtr makeTransform(const osg::Matrix& matrix)
{
    const osg::Transform3DPtr core = osg::Transform3D::create();
    core->setMatrix(matrix);
    const osg::NodePtr node = osg::Node::create();
    node->setCore(core);
    return node;
}

osg::NodePtr makeShell()
{
    const osg::GeometryPtr core = osg::Geometry::create();
    core->setGeometryType(osg::Geometry::ShellType);
    const osg::NodePtr node = osg::Node::create();
    node->setCore(core);
    return node;
}

CornerVertices inOrderOfFirstUse(const std::vector<unsigned int>& corners, std::size_t count)
{
    CornerVertices vertices;
    vertices.vertexOfCorner.reserve(corners.size());
    std::vector<std::uint32_t> numberOfVertex(count, absentIndex);
    for (const unsigned int vertex : corners) {
        std::uint32_t& number = numberOfVertex[vertex];
        if (number == absentIndex)
            number = static_cast<std::uint32_t>(vertices.vertexCount++);
        vertices.vertexOfCorner.push_back(number);
    }
    return vertices;
}

} // namespace

ProjectionScene makeProjectionScene(const Document& document, std::span<const std::size_t> numbers,
                                    bool isShell)
{
    ProjectionScene scene;
    scene.root = makeTransform({});
    if (isShell) {
        scene.nodes.push_back(makeShell());
        scene.root->addChild(scene.nodes.front());
    }
    for (const std::size_t number : numbers) {
        const DocumentGeometry& geometry = document.geometries[number];
        const osg::RefPtr<osg::Geometry> core = makeCore(geometry, isShell);
        const osg::NodePtr node = osg::Node::create();
        node->setCore(core);
        if (isShell) {
            scene.nodes.front()->addChild(node);
        } else {
            const osg::NodePtr place = makeTransform(matrixOf(geometry.toWorld));
            place->addChild(node);
            scene.root->addChild(place);
            scene.nodes.push_back(node);
        }
        scene.surfaces.push_back({number, core, core->getPositions()->getSize()});
    }
    return scene;
}

void ProjectionScene::setScale(float factor) const
{
    const osg::Matrix matrix = osg::Matrix::scaling(osg::Vec3f(factor, factor, factor));
    osg::dcast<osg::TransformBase>(root->getCore())->setMatrix(matrix);
}

ProjectedSurface projectedSurface(const ProjectionScene::Surface& surface, kyUVTypes::UVSet slot)
{
    const kyUVUtils::UVArray ofVertex = kyUVUtils::getUVValuesLocal(surface.core, slot);
    const std::vector<unsigned int> corners = surface.core->getIndices()->getValues();
    ProjectedSurface projected;
    projected.uvs.reserve(corners.size());
    for (const unsigned int vertex : corners)
        projected.uvs.push_back({ofVertex.at(vertex)[0], ofVertex.at(vertex)[1]});
    projected.vertices = inOrderOfFirstUse(corners, ofVertex.size());
    return projected;
}

} // namespace uvtool

#include "ShellMeshes.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

namespace bench
{
namespace
{

/// Cells of the sheet: columns [x0, x1) and rows [y0, y1).
struct CellRange
{
    unsigned int x0;
    unsigned int x1;
    unsigned int y0;
    unsigned int y1;
};

/// Two triangles a cell, row by row, over the vertices of these cells alone.
std::vector<unsigned int> trianglesOf(const CellRange& cells)
{
    const unsigned int width = cells.x1 - cells.x0 + 1;
    std::vector<unsigned int> triangles;
    triangles.reserve(std::size_t{6} * (cells.x1 - cells.x0) * (cells.y1 - cells.y0));
    for (unsigned int y = 0; y < cells.y1 - cells.y0; ++y)
        for (unsigned int x = 0; x < cells.x1 - cells.x0; ++x) {
            const unsigned int a = y * width + x;
            triangles.insert(triangles.end(),
                             {a, a + 1, a + width + 1, a, a + width + 1, a + width});
        }
    return triangles;
}

osg::GeometryPtr geometryOf(const CellRange& cells, unsigned int side, float uvShift)
{
    std::vector<osg::Pnt3f> positions;
    std::vector<osg::Vec2f> uvs;
    for (unsigned int y = cells.y0; y <= cells.y1; ++y)
        for (unsigned int x = cells.x0; x <= cells.x1; ++x) {
            const float u = static_cast<float>(x) / static_cast<float>(side);
            const float v = static_cast<float>(y) / static_cast<float>(side);
            positions.emplace_back(u, v, 0.1F * std::sin(9 * u) * std::cos(7 * v));
            uvs.emplace_back(u + uvShift, v);
        }
    const auto geometry = osg::Geometry::create();
    geometry->setPositions(osg::GeoPositions3f::create());
    geometry->getPositions()->setValues(positions);
    geometry->setTexCoords(osg::GeoTexCoords2f::create());
    geometry->getTexCoords()->setValues(uvs);
    geometry->setIndices(osg::GeoIndicesUI32::create());
    geometry->getIndices()->setValues(trianglesOf(cells));
    return geometry;
}

/// Cells along a side of the sheet.
unsigned int sideOf(unsigned int triangleCount)
{
    const double cells = std::sqrt(triangleCount / 2.0);
    return std::max(1U, static_cast<unsigned int>(std::lround(cells)));
}

/// The divisor of a number that is nearest to its root from below.
unsigned int columnsOf(unsigned int count)
{
    auto columns = static_cast<unsigned int>(std::sqrt(count));
    while (count % columns != 0)
        --columns;
    return columns;
}

} // namespace

osg::RefPtr<osg::Node> sheetShell(unsigned int triangleCount, unsigned int surfaceCount,
                                  SurfaceBorders borders)
{
    const unsigned int columns = columnsOf(surfaceCount);
    const unsigned int rows = surfaceCount / columns;
    const unsigned int side = std::max({sideOf(triangleCount), columns, rows});
    osg::RefPtr<osg::Node> shell(osg::Node::create());
    const auto core = osg::Geometry::create();
    core->setGeometryType(osg::Geometry::ShellType);
    shell->setCore(core);
    for (unsigned int i = 0; i < surfaceCount; ++i) {
        const unsigned int column = i % columns;
        const unsigned int row = i / columns;
        const CellRange cells{side * column / columns, side * (column + 1) / columns,
                              side * row / rows, side * (row + 1) / rows};
        const auto child = osg::Node::create();
        child->setCore(
            geometryOf(cells, side, borders == SeamBorders ? 2 * static_cast<float>(i) : 0.F));
        shell->addChild(child);
    }
    return shell;
}

osg::RefPtr<osg::Node> sheetPlain(unsigned int triangleCount)
{
    const unsigned int side = sideOf(triangleCount);
    osg::RefPtr<osg::Node> node(osg::Node::create());
    node->setCore(geometryOf({0, side, 0, side}, side, 0.F));
    return node;
}

osg::GeometryPtr coreOf(const osg::NodePtr& node)
{
    return osg::dcast<osg::Geometry>(node->getCore());
}

TriangleList sheetTriangles(unsigned int triangleCount)
{
    const unsigned int side = sideOf(triangleCount);
    return {trianglesOf({0, side, 0, side}), (side + 1) * (side + 1)};
}

namespace
{

std::vector<unsigned int> randomOrder(std::size_t count, std::mt19937& random)
{
    std::vector<unsigned int> order(count);
    std::iota(order.begin(), order.end(), 0U);
    std::shuffle(order.begin(), order.end(), random);
    return order;
}

/// The triangles in random order, with new numbers of their vertices.
std::vector<unsigned int> shuffledTriangles(const std::vector<unsigned int>& triangles,
                                            const std::vector<unsigned int>& newVertex,
                                            std::mt19937& random)
{
    std::vector<unsigned int> result;
    result.reserve(triangles.size());
    for (const unsigned int t : randomOrder(triangles.size() / 3, random))
        for (std::size_t k = 0; k < 3; ++k)
            result.push_back(newVertex[triangles[3 * std::size_t{t} + k]]);
    return result;
}

} // namespace

TriangleList shuffled(const TriangleList& list)
{
    std::mt19937 random(1);
    const std::vector<unsigned int> newVertex = randomOrder(list.vertexCount, random);
    return {shuffledTriangles(list.triangles, newVertex, random), list.vertexCount};
}

void scatterSurfaces(const osg::NodePtr& shell)
{
    std::mt19937 random(1);
    for (unsigned int i = 0; i < shell->getNChildren(); ++i) {
        const osg::GeometryPtr surface = coreOf(shell->getChild(i));
        const auto oldVertex = randomOrder(surface->getPositions()->getSize(), random);
        std::vector<unsigned int> newVertex(oldVertex.size());
        for (unsigned int vertex = 0; vertex < oldVertex.size(); ++vertex)
            newVertex[oldVertex[vertex]] = vertex;
        surface->getPositions()->gather(oldVertex);
        surface->getTexCoords()->gather(oldVertex);
        surface->getIndices()->setValues(
            shuffledTriangles(surface->getIndices()->getValues(), newVertex, random));
    }
}

TriangleList pieceTriangles(unsigned int triangleCount)
{
    constexpr CellRange cells{0, 4, 0, 2};
    constexpr unsigned int verticesOfPiece = 15;
    const std::vector<unsigned int> piece = trianglesOf(cells);
    TriangleList list;
    while (list.triangles.size() < 3 * std::size_t{triangleCount}) {
        for (const unsigned int vertex : piece)
            list.triangles.push_back(list.vertexCount + vertex);
        list.vertexCount += verticesOfPiece;
    }
    return list;
}

} // namespace bench

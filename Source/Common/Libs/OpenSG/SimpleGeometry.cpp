#include "OpenSG/SimpleGeometry.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>
#include <vector>

namespace osg
{

namespace
{

bool isLength(float value)
{
    return std::isfinite(value) && value > 0;
}

/// A geometry of one primitive.
GeometryPtr makePrimitive(GeoPrimitive::Code code, std::vector<Pnt3f> points,
                          std::span<const unsigned> corners)
{
    const auto types = GeoPTypesUI8::create();
    types->addValue(code);
    const auto lengths = GeoPLengthsUI32::create();
    lengths->addValue(static_cast<unsigned>(corners.size()));
    const auto indices = GeoIndicesUI32::create();
    indices->setValues(corners);
    const auto positions = GeoPositions3f::create();
    positions->takeValues(std::move(points));

    const auto geometry = Geometry::create();
    geometry->setTypes(types);
    geometry->setLengths(lengths);
    geometry->setIndices(indices);
    geometry->setPositions(positions);
    return geometry;
}

/// The vertices and triangles of a shape that grows.
struct Shape
{
    std::vector<Pnt3f> positions;
    std::vector<Vec3f> normals;
    std::vector<Vec2f> texCoords;
    std::vector<unsigned> corners;

    [[nodiscard]] unsigned vertexCount() const { return static_cast<unsigned>(positions.size()); }

    void addVertex(const Pnt3f& position, const Vec3f& normal, const Vec2f& texCoord)
    {
        positions.push_back(position);
        normals.push_back(normal);
        texCoords.push_back(texCoord);
    }

    void addTriangle(unsigned a, unsigned b, unsigned c)
    {
        corners.insert(corners.end(), {a, b, c});
    }

    /// The triangles of a grid whose vertices are there already, row after row, and whose columns
    /// run to the right and rows upward seen from outside.
    void addGridTriangles(unsigned first, unsigned columns, unsigned rows)
    {
        const unsigned perRow = columns + 1;
        for (unsigned row = 0; row < rows; ++row)
            for (unsigned column = 0; column < columns; ++column) {
                const unsigned a = first + row * perRow + column;
                addTriangle(a, a + 1, a + perRow + 1);
                addTriangle(a, a + perRow + 1, a + perRow);
            }
    }
};

NodePtr makeNode(Shape shape)
{
    const auto normals = GeoNormals3f::create();
    normals->takeValues(std::move(shape.normals));
    const auto texCoords = GeoTexCoords2f::create();
    texCoords->takeValues(std::move(shape.texCoords));

    const GeometryPtr geometry =
        makePrimitive(GeoPrimitive::Triangles, std::move(shape.positions), shape.corners);
    geometry->setNormals(normals);
    geometry->setTexCoords(texCoords);
    geometry->setIndexMapping(
        {Geometry::MapPosition | Geometry::MapNormal | Geometry::MapTexCoords});
    const auto node = Node::create();
    node->setCore(geometry);
    return node;
}

/// The point on the rim of a circle of radius 1 around y, on -z for 0 and on from there over -x.
/// The last one is exactly the first.
Vec3f onRim(unsigned side, unsigned sides)
{
    const double angle = std::numbers::pi * (2.0 * (side % sides) / sides - 1);
    return Vec3f(std::sin(angle), 0, std::cos(angle));
}

void addSide(Shape& shape, float height, float radius, unsigned sides)
{
    const unsigned first = shape.vertexCount();
    for (unsigned row = 0; row < 2; ++row)
        for (unsigned side = 0; side <= sides; ++side) {
            const Vec3f normal = onRim(side, sides);
            Pnt3f position(normal * radius);
            position[1] = (static_cast<float>(row) - 0.5F) * height;
            shape.addVertex(position, normal,
                            Vec2f(static_cast<double>(side) / sides, static_cast<float>(row)));
        }
    shape.addGridTriangles(first, sides, 1);
}

/// up  1 for the top, -1 for the bottom
void addCap(Shape& shape, float height, float radius, unsigned sides, float up)
{
    const unsigned center = shape.vertexCount();
    const Vec3f normal(0, up, 0);
    const auto add = [&](const Vec3f& onCircle) {
        Pnt3f position(onCircle * radius);
        position[1] = 0.5F * up * height;
        shape.addVertex(position, normal,
                        Vec2f(0.5F + 0.5F * onCircle.x(), 0.5F - 0.5F * up * onCircle.z()));
    };
    add(Vec3f());
    for (unsigned side = 0; side < sides; ++side)
        add(onRim(side, sides));
    for (unsigned side = 0; side < sides; ++side) {
        unsigned a = center + 1 + side;
        unsigned b = center + 1 + (side + 1) % sides;
        if (up < 0)
            std::swap(a, b);
        shape.addTriangle(center, a, b);
    }
}

/// Whether so many vertices can be numbered, and the corners of their triangles counted.
bool canBeNumbered(std::uint64_t columns, std::uint64_t rows)
{
    constexpr std::uint64_t most = std::numeric_limits<unsigned>::max() / 6;
    return columns <= most && rows <= most && (columns + 1) * (rows + 1) <= most;
}

} // namespace

NodePtr makePlane(float width, float height, unsigned columns, unsigned rows,
                  CoordinateSystem system)
{
    columns = std::max(columns, 1U);
    rows = std::max(rows, 1U);
    if (!isLength(width) || !isLength(height) || !canBeNumbered(columns, rows))
        return NullFC;

    const unsigned normalAxis = system % 3;
    Vec3f normal;
    normal[normalAxis] = 1;
    Shape shape;
    for (unsigned row = 0; row <= rows; ++row)
        for (unsigned column = 0; column <= columns; ++column) {
            const Vec2f uv(static_cast<double>(column) / columns, static_cast<double>(row) / rows);
            Pnt3f position;
            position[(normalAxis + 1) % 3] = (uv.x() - 0.5F) * width;
            position[(normalAxis + 2) % 3] = (uv.y() - 0.5F) * height;
            shape.addVertex(position, normal, uv);
        }
    shape.addGridTriangles(0, columns, rows);
    return makeNode(std::move(shape));
}

NodePtr makeCylinder(float height, float radius, unsigned sides, bool hasSide, bool hasTop,
                     bool hasBottom)
{
    sides = std::max(sides, 3U);
    if (!isLength(height) || !isLength(radius) || !canBeNumbered(sides, 4))
        return NullFC;

    Shape shape;
    if (hasSide)
        addSide(shape, height, radius, sides);
    if (hasTop)
        addCap(shape, height, radius, sides, 1);
    if (hasBottom)
        addCap(shape, height, radius, sides, -1);
    return makeNode(std::move(shape));
}

GeometryPtr makeLines(std::span<const Pnt3f> points, std::span<const unsigned> ends)
{
    return makePrimitive(GeoPrimitive::Lines, {points.begin(), points.end()}, ends);
}

} // namespace osg

#pragma once

#include "OpenSG/Geometry.h"

#include <array>
#include <cstddef>
#include <iterator>

namespace osg
{

/// Walks the triangles of a geometry in the order of its indices:
///
///     for (auto t = geometry->beginTriangles(); t != geometry->endTriangles(); ++t)
///         use(t.getPosition(0), t.getPosition(1), t.getPosition(2));
///
/// Strips, fans, quads and polygons come as the triangles that they are drawn as, turned the same
/// way; points and lines are passed over. Corners that do not make up a whole triangle, and lengths
/// beyond the end of the indices, are cut off. Without indices there are no triangles. A
/// multi-indexed geometry is walked by the numbers of its positions.
///
/// The geometry must not change during the walk.
class TriangleIterator
{
public:
    using value_type = TriangleIterator;
    using difference_type = std::ptrdiff_t;

    /// Past the end of any geometry.
    TriangleIterator() = default;
    /// At the first triangle.
    explicit TriangleIterator(const Geometry& geometry);

    /// The number of the triangle, counted from 0.
    [[nodiscard]] std::size_t getIndex() const { return _index; }
    /// The vertex id of corner k, 0 to 2.
    [[nodiscard]] unsigned getPositionIndex(unsigned k) const { return numberAt(_corners[k]); }
    /// The position of corner k; the origin if its vertex id is beyond the positions.
    [[nodiscard]] Pnt3f getPosition(unsigned k) const;

    TriangleIterator& operator++();

    bool operator==(const TriangleIterator& other) const
    {
        return _atEnd == other._atEnd && (_atEnd || _index == other._index);
    }

private:
    [[nodiscard]] unsigned numberAt(std::size_t corner) const;
    [[nodiscard]] std::size_t primitiveCount() const;
    void enterPrimitive();
    void skipToTriangle();

    // What is walked. The spans are set for the kinds that are read without a virtual call.
    GeoIndicesPtr _indices;
    std::span<const std::uint32_t> _indices32;
    std::span<const std::uint16_t> _indices16;
    GeoPositionsPtr _positions;
    std::span<const Pnt3f> _positions3f;
    GeoPTypesPtr _types;
    GeoPLengthsPtr _lengths;
    std::size_t _stride = 1;
    std::size_t _offset = 0;
    std::size_t _cornerCount = 0;

    // Where the walk is.
    bool _atEnd = true;
    std::size_t _index = 0;
    std::size_t _primitive = 0;
    unsigned _type = GeoPrimitive::Triangles;
    std::size_t _firstCorner = 0; ///< of the primitive
    std::size_t _length = 0;      ///< of the primitive, in corners
    std::size_t _triangle = 0;    ///< within the primitive
    std::array<std::size_t, 3> _corners{};
};

} // namespace osg

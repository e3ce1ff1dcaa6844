#include "OpenSG/TriangleIterator.h"

#include <algorithm>
#include <utility>

namespace osg
{

namespace
{

std::size_t triangleCount(unsigned primitiveType, std::size_t cornerCount)
{
    switch (primitiveType) {
    case GeoPrimitive::Triangles:
        return cornerCount / 3;
    case GeoPrimitive::TriangleStrip:
    case GeoPrimitive::TriangleFan:
    case GeoPrimitive::Polygon:
        return cornerCount < 3 ? 0 : cornerCount - 2;
    case GeoPrimitive::Quads:
        return cornerCount / 4 * 2;
    case GeoPrimitive::QuadStrip:
        return cornerCount < 4 ? 0 : (cornerCount / 2 - 1) * 2;
    default:
        return 0;
    }
}

/// The corners of triangle t, counted from the first corner of the primitive.
std::array<std::size_t, 3> cornersOf(unsigned primitiveType, std::size_t t)
{
    const bool isSecond = t % 2 == 1;
    const std::size_t quad = t / 2;
    switch (primitiveType) {
    case GeoPrimitive::TriangleStrip: // every second one is turned back
        return isSecond ? std::array{t + 1, t, t + 2} : std::array{t, t + 1, t + 2};
    case GeoPrimitive::TriangleFan:
    case GeoPrimitive::Polygon:
        return {0, t + 1, t + 2};
    case GeoPrimitive::Quads:
        return isSecond ? std::array{4 * quad, 4 * quad + 2, 4 * quad + 3}
                        : std::array{4 * quad, 4 * quad + 1, 4 * quad + 2};
    case GeoPrimitive::QuadStrip: // around the quad: 0, 1, 3, 2
        return isSecond ? std::array{2 * quad, 2 * quad + 3, 2 * quad + 2}
                        : std::array{2 * quad, 2 * quad + 1, 2 * quad + 3};
    default:
        return {3 * t, 3 * t + 1, 3 * t + 2};
    }
}

} // namespace

TriangleIterator::TriangleIterator(const Geometry& geometry)
    : _indices(geometry.getIndices()), _positions(geometry.getPositions()),
      _types(geometry.getTypes()), _lengths(geometry.getLengths()),
      _stride(geometry.getCornerStride()), _offset(geometry.getCornerOffset(Geometry::MapPosition))
{
    if (_indices == NullFC)
        return;
    if (const auto indices = dcast<GeoIndicesUI32>(_indices))
        _indices32 = std::as_const(*indices).values();
    if (const auto indices = dcast<GeoIndicesUI16>(_indices))
        _indices16 = std::as_const(*indices).values();
    if (const auto positions = dcast<GeoPositions3f>(_positions))
        _positions3f = positions->values();
    if (_stride == 1)
        _offset = 0; // a single entry need not name the positions
    _cornerCount = _indices->getSize() / _stride;
    _atEnd = false;
    enterPrimitive();
    skipToTriangle();
}

Pnt3f TriangleIterator::getPosition(unsigned k) const
{
    const unsigned vertex = getPositionIndex(k);
    if (vertex < _positions3f.size())
        return _positions3f[vertex];
    return _positions ? _positions->getValue(vertex) : Pnt3f();
}

TriangleIterator& TriangleIterator::operator++()
{
    if (_atEnd)
        return *this;
    ++_index;
    ++_triangle;
    skipToTriangle();
    return *this;
}

unsigned TriangleIterator::numberAt(std::size_t corner) const
{
    const std::size_t at = corner * _stride + _offset;
    if (at < _indices32.size())
        return _indices32[at];
    if (at < _indices16.size())
        return _indices16[at];
    return _indices ? _indices->getValue(static_cast<unsigned>(at)) : 0;
}

std::size_t TriangleIterator::primitiveCount() const
{
    return _lengths ? _lengths->getSize() : 1;
}

void TriangleIterator::enterPrimitive()
{
    const auto primitive = static_cast<unsigned>(_primitive);
    _type = _types ? _types->getValue(primitive) : unsigned{GeoPrimitive::Triangles};
    const std::size_t rest = _cornerCount - _firstCorner;
    _length = _lengths ? std::min<std::size_t>(_lengths->getValue(primitive), rest) : rest;
    _triangle = 0;
}

void TriangleIterator::skipToTriangle()
{
    while (_triangle >= triangleCount(_type, _length)) {
        _firstCorner += _length;
        if (++_primitive >= primitiveCount()) {
            _atEnd = true;
            return;
        }
        enterPrimitive();
    }
    _corners = cornersOf(_type, _triangle);
    for (std::size_t& corner : _corners)
        corner += _firstCorner;
}

} // namespace osg

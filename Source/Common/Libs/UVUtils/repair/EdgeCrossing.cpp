#include "UVUtils/repair/EdgeCrossing.h"

namespace
{

/// Squared lengths and areas below it are those of nothing.
constexpr float leastSquare = 0.000001F;

/// Between 0 and 1. What is no number, as the place on an edge without a length, is 0.
float clampToEdge(float t)
{
    if (t > 1)
        return 1;
    return t > 0 ? t : 0.F;
}

/// Not clamped.
float placeOnLine(const osg::Vec3f& edge, const osg::Vec3f& edgeToFrom, const osg::Vec3f& way)
{
    const osg::Vec3f normal = edge.cross(edgeToFrom);
    const float square = normal.squareLength();
    if (!(square >= leastSquare))
        return edgeToFrom.dot(edge) / edge.squareLength();
    // The way, moved into the plane of the edge and its start.
    const osg::Vec3f flat = way + normal * (-way.dot(normal) / square);
    const osg::Vec3f across = edge - flat * (edge.dot(flat) / flat.squareLength());
    return edgeToFrom.dot(across) / across.squareLength();
}

} // namespace

EdgeCrossing crossingWithLine(const osg::Pnt3f& first, const osg::Pnt3f& second,
                              const osg::Pnt3f& from, const osg::Pnt3f& to)
{
    const osg::Vec3f edge = second - first;
    const float t = clampToEdge(placeOnLine(edge, from - first, to - from));
    return {t, first + edge * t};
}

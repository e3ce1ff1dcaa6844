#include "UVUtils/editing/StraightestWalk.h"

#include <algorithm>
#include <cmath>

namespace
{

/// Below it one of two edges runs along the normal and has no direction in the surface.
constexpr float leastExtent = 1e-10F;

/// The cosine of the angle between two edges as seen along a normal. Not a number without one.
float cosInSurface(const osg::Vec3f& a, const osg::Vec3f& b, const osg::Vec3f& normal)
{
    const float riseA = dot(a, normal);
    const float riseB = dot(b, normal);
    const float extent = std::sqrt((1 - riseB * riseB) * (1 - riseA * riseA));
    if (extent < leastExtent)
        return std::nanf("");
    return (dot(a, b) - riseB * riseA) / extent;
}

} // namespace

StraightestWalk::StraightestWalk(const Surface& surface, const Limits& limits, bool stopAtBorders)
    : surface_(surface), limits_(limits), stopAtBorders_(stopAtBorders),
      isVisited_(surface.positions.size())
{}

void StraightestWalk::goOn(unsigned int from, unsigned int to, FlatEdgeList& edges)
{
    if (endsAt(to))
        return;
    isVisited_[from] = 1;
    isVisited_[to] = 1;
    while (const std::optional<unsigned int> next = straightestNeighbour(from, to)) {
        edges.insert(edges.end(), {to, *next});
        if (isVisited_[*next] != 0 || endsAt(*next))
            return;
        isVisited_[*next] = 1;
        from = to;
        to = *next;
    }
}

osg::Vec3f StraightestWalk::direction(unsigned int from, unsigned int to) const
{
    return (surface_.positions[to] - surface_.positions[from]).normalized();
}

bool StraightestWalk::endsAt(unsigned int vertex) const
{
    const auto borders = surface_.graph.borderVertices();
    return stopAtBorders_ && std::binary_search(borders.begin(), borders.end(), vertex);
}

/// Of several that are equally straight the lowest one; none without one within the limits.
std::optional<unsigned int> StraightestWalk::straightestNeighbour(unsigned int from,
                                                                  unsigned int to) const
{
    const osg::Vec3f before = direction(from, to);
    std::optional<unsigned int> straightest;
    float best = -10.0F; // less than any cosine
    for (const unsigned int neighbour : surface_.graph.neighbours(to)) {
        const osg::Vec3f after = direction(to, neighbour);
        if (neighbour == from || !(dot(before, after) >= limits_.cosInSpace))
            continue;
        const float cos = cosInSurface(before, after, surface_.normals[to]);
        if (!(cos >= limits_.cosInSurface))
            continue;
        if (cos > best || (cos == best && neighbour < straightest)) {
            best = cos;
            straightest = neighbour;
        }
    }
    return straightest;
}

#include "Unfold3D/packing/OutlineDistance.h"

#include "Unfold3D/base/ExactPredicates.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

struct Segment
{
    Vec2 a;
    Vec2 b;
};

Segment placed(const OutlineEdge& edge, Vec2 at)
{
    return {edge.from + at, edge.to + at};
}

double squaredDistance(Vec2 p, const Segment& s)
{
    const Vec2 along = s.b - s.a;
    const double squaredLength = dot(along, along);
    const double share =
        squaredLength > 0.0 ? std::clamp(dot(p - s.a, along) / squaredLength, 0.0, 1.0) : 0.0;
    const Vec2 away = p - (s.a + share * along);
    return dot(away, away);
}

bool cross(const Segment& s, const Segment& t)
{
    return orient2d(s.a, s.b, t.a) * orient2d(s.a, s.b, t.b) < 0 &&
           orient2d(t.a, t.b, s.a) * orient2d(t.a, t.b, s.b) < 0;
}

bool isCloserThan(const Segment& s, const Segment& t, double distance)
{
    // Two segments that don't cross are nearest at an end of one of them.
    const double squared = distance * distance;
    return squaredDistance(s.a, t) < squared || squaredDistance(s.b, t) < squared ||
           squaredDistance(t.a, s) < squared || squaredDistance(t.b, s) < squared || cross(s, t);
}

/// Walks both trees down to the pairs of leaves whose boxes `meet(boxOfA, boxOfB)`, until
/// `use(edgesOfA, edgesOfB)` returns true. The boxes are in the frame of b.
template <class Meet, class Use>
bool visitPairs(const OutlineTree& a, const OutlineTree::Node& nodeA, Vec2 shift,
                const OutlineTree& b, const OutlineTree::Node& nodeB, const Meet& meet,
                const Use& use)
{
    if (!meet(a.box(nodeA).movedBy(shift), b.box(nodeB)))
        return false;
    if (nodeA.isLeaf() && nodeB.isLeaf())
        return use(a.edges(nodeA), b.edges(nodeB));
    const bool splitA =
        !nodeA.isLeaf() && (nodeB.isLeaf() || nodeA.end - nodeA.begin >= nodeB.end - nodeB.begin);
    if (splitA)
        return visitPairs(a, nodeA.low(), shift, b, nodeB, meet, use) ||
               visitPairs(a, nodeA.high(), shift, b, nodeB, meet, use);
    return visitPairs(a, nodeA, shift, b, nodeB.low(), meet, use) ||
           visitPairs(a, nodeA, shift, b, nodeB.high(), meet, use);
}

/// The way that a point at the origin goes along the negative x axis before it enters the disc.
double wayToDisc(Vec2 centre, double radius, double limit)
{
    const double inside = radius * radius - centre.y * centre.y;
    if (centre.x > 0.0 || inside <= 0.0)
        return limit;
    return std::max(0.0, -centre.x - std::sqrt(inside));
}

/// The same for all points within `radius` of a segment.
double wayToCapsule(const Segment& s, double radius, double limit)
{
    double way = std::min(wayToDisc(s.a, radius, limit), wayToDisc(s.b, radius, limit));
    // The long side of the capsule that faces the point.
    Vec2 along = s.b - s.a;
    if (along.y < 0.0)
        along = -1.0 * along;
    const double size = length(along);
    if (size <= 0.0)
        return way;
    const Vec2 facing{radius * along.y / size, -radius * along.x / size};
    const Vec2 a = s.a + facing;
    const Vec2 b = s.b + facing;
    if ((a.y < 0.0) == (b.y < 0.0))
        return way;
    const double x = a.x + (b.x - a.x) * (a.y / (a.y - b.y));
    if (x <= 0.0)
        way = std::min(way, -x);
    else if (squaredDistance({}, s) < radius * radius)
        way = 0.0;
    return way;
}

/// Turned so that the direction becomes the negative x axis.
Vec2 leftward(Vec2 p, Slide direction)
{
    return direction == Slide::Left ? p : Vec2{p.y, -p.x};
}

double wayOf(Vec2 moving, const Segment& standing, Slide direction, double distance, double limit)
{
    return wayToCapsule(
        {leftward(standing.a - moving, direction), leftward(standing.b - moving, direction)},
        distance, limit);
}

/// The standing segment comes the other way, seen from the moving one.
double wayOf(const Segment& moving, Vec2 standing, Slide direction, double distance, double limit)
{
    return wayToCapsule(
        {leftward(standing - moving.a, direction), leftward(standing - moving.b, direction)},
        distance, limit);
}

Box2 sweptBox(Box2 box, Slide direction, double way)
{
    (direction == Slide::Left ? box.low.x : box.low.y) -= way;
    return box;
}

bool covers(const OutlineTree& region, const OutlineTree::Node& node, Vec2 p, int& winding)
{
    const Box2& box = region.box(node);
    if (p.y < box.low.y || p.y > box.high.y || p.x > box.high.x)
        return false;
    if (!node.isLeaf())
        return covers(region, node.low(), p, winding) || covers(region, node.high(), p, winding);
    for (const OutlineEdge& edge : region.edges(node)) {
        const bool isUpward = edge.from.y <= p.y && edge.to.y > p.y;
        const bool isDownward = edge.to.y <= p.y && edge.from.y > p.y;
        if (isUpward && orient2d(edge.from, edge.to, p) > 0)
            winding += edge.winding;
        else if (isDownward && orient2d(edge.from, edge.to, p) < 0)
            winding -= edge.winding;
    }
    return false;
}

} // namespace

bool isCloserThan(const PlacedOutline& a, const PlacedOutline& b, double distance)
{
    if (a.outline->isEmpty() || b.outline->isEmpty())
        return false;
    const Vec2 shift = a.at - b.at;
    return visitPairs(
        *a.outline, a.outline->root(), shift, *b.outline, b.outline->root(),
        [&](const Box2& boxA, const Box2& boxB) { return boxA.inflatedBy(distance).meets(boxB); },
        [&](std::span<const OutlineEdge> edgesA, std::span<const OutlineEdge> edgesB) {
            for (const OutlineEdge& s : edgesA)
                for (const OutlineEdge& t : edgesB)
                    if (isCloserThan(placed(s, shift), placed(t, {}), distance))
                        return true;
            return false;
        });
}

bool covers(const PlacedOutline& region, Vec2 point)
{
    if (region.outline->isEmpty())
        return false;
    int winding = 0;
    covers(*region.outline, region.outline->root(), point - region.at, winding);
    return winding > 0;
}

double freeWay(const PlacedOutline& moving, const PlacedOutline& standing, Slide direction,
               double distance, double limit)
{
    if (moving.outline->isEmpty() || standing.outline->isEmpty())
        return limit;
    const Vec2 shift = moving.at - standing.at;
    double way = limit;
    visitPairs(
        *moving.outline, moving.outline->root(), shift, *standing.outline, standing.outline->root(),
        [&](const Box2& boxMoving, const Box2& boxStanding) {
            return sweptBox(boxMoving.inflatedBy(distance), direction, way).meets(boxStanding);
        },
        [&](std::span<const OutlineEdge> edgesMoving, std::span<const OutlineEdge> edgesStanding) {
            for (const OutlineEdge& edge : edgesMoving)
                for (const OutlineEdge& other : edgesStanding) {
                    const Segment s = placed(edge, shift);
                    const Segment t = placed(other, {});
                    way = std::min({way, wayOf(s.a, t, direction, distance, way),
                                    wayOf(s.b, t, direction, distance, way),
                                    wayOf(s, t.a, direction, distance, way),
                                    wayOf(s, t.b, direction, distance, way)});
                }
            return false;
        });
    return way;
}

} // namespace unfold3d

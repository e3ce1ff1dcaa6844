#include "Unfold3D/packing/OutlineDistance.h"

#include "Unfold3D/base/ExactPredicates.h"
#include "Unfold3D/packing/Turned.h"

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

/// The way of a point that moves from the origin along the negative x axis.
class PointWay
{
public:
    PointWay(double limit, double distance) : length_(limit), distance_(distance) {}

    double length() const { return length_; }
    bool isBlocked() const { return isBlocked_; }
    Vec2 normal() const { return normal_; }

    /// Ends the way where it comes closer than the distance to a segment.
    void meet(const Segment& s)
    {
        meetDisc(s.a);
        meetDisc(s.b);
        meetSide(s);
    }

private:
    void meetDisc(Vec2 centre)
    {
        const double inside = distance_ * distance_ - centre.y * centre.y;
        if (centre.x > 0.0 || inside <= 0.0)
            return;
        const double half = std::sqrt(inside);
        endAt(-centre.x - half, (1.0 / distance_) * Vec2{half, -centre.y});
    }
    /// The long side of all within the distance of the segment that faces the point.
    void meetSide(const Segment& s)
    {
        Vec2 along = s.b - s.a;
        if (along.y < 0.0)
            along = -1.0 * along;
        const double size = unfold3d::length(along);
        if (size <= 0.0)
            return;
        const Vec2 facing{along.y / size, -along.x / size};
        const Vec2 a = s.a + distance_ * facing;
        const Vec2 b = s.b + distance_ * facing;
        if ((a.y < 0.0) == (b.y < 0.0))
            return;
        const double x = a.x + (b.x - a.x) * (a.y / (a.y - b.y));
        if (x <= 0.0)
            endAt(-x, facing);
        else if (squaredDistance({}, s) < distance_ * distance_)
            endAt(0.0, facing);
    }
    void endAt(double length, Vec2 normal)
    {
        if (length >= length_)
            return;
        length_ = std::max(0.0, length);
        isBlocked_ = true;
        normal_ = normal;
    }

    double length_;
    double distance_;
    bool isBlocked_ = false;
    Vec2 normal_;
};

/// Turns a direction into the negative x axis, and back.
class Heading
{
public:
    explicit Heading(Vec2 direction) : back_{-direction.x, -direction.y} {}

    Vec2 toAxis(Vec2 p) const { return {dot(back_, p), unfold3d::cross(back_, p)}; }
    Vec2 fromAxis(Vec2 p) const { return turned(p, back_); }

private:
    Vec2 back_;
};

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

FreeWay freeWay(const PlacedOutline& moving, const PlacedOutline& standing, Vec2 direction,
                double distance, double limit)
{
    if (moving.outline->isEmpty() || standing.outline->isEmpty())
        return {limit, false, {}};
    const Vec2 shift = moving.at - standing.at;
    const Heading heading(direction);
    PointWay way(limit, distance);
    visitPairs(
        *moving.outline, moving.outline->root(), shift, *standing.outline, standing.outline->root(),
        [&](const Box2& boxMoving, const Box2& boxStanding) {
            return sweptBox(boxMoving.inflatedBy(distance), direction, way.length())
                .meets(boxStanding);
        },
        [&](std::span<const OutlineEdge> edgesMoving, std::span<const OutlineEdge> edgesStanding) {
            for (const OutlineEdge& edge : edgesMoving)
                for (const OutlineEdge& other : edgesStanding) {
                    const Segment s = placed(edge, shift);
                    const Segment t = placed(other, {});
                    // Ends of the moving one against the standing one, then the other way round.
                    // Both depend on differences of standing and moving points alone.
                    for (const Vec2 p : {s.a, s.b})
                        way.meet({heading.toAxis(t.a - p), heading.toAxis(t.b - p)});
                    for (const Vec2 p : {t.a, t.b})
                        way.meet({heading.toAxis(p - s.a), heading.toAxis(p - s.b)});
                }
            return false;
        });
    return {way.length(), way.isBlocked(), heading.fromAxis(way.normal())};
}

Box2 sweptBox(const Box2& box, Vec2 direction, double way)
{
    Box2 swept = box;
    swept.add(box.movedBy(way * direction));
    return swept;
}

} // namespace unfold3d

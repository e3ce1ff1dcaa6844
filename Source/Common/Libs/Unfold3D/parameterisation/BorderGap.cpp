#include "Unfold3D/parameterisation/BorderGap.h"

#include <algorithm>

namespace unfold3d
{

namespace
{

constexpr double narrowGap = 0.025;
constexpr double narrowPerWay = 0.2;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Whether a direction from a point of the border goes into the surface, which lies from `next`
/// counter-clockwise to `previous`.
bool pointsIntoSurface(Vec2 next, Vec2 previous, Vec2 direction)
{
    if (cross(next, previous) > 0.0)
        return cross(next, direction) > 0.0 && cross(direction, previous) > 0.0;
    return cross(previous, direction) < 0.0 || cross(direction, next) < 0.0;
}

} // namespace

BorderGap gapBetween(const Border& border, std::span<const Vec2> positions, int point, int edge)
{
    const Vec2 origin = positions[at(edge)];
    const Vec2 along = positions[at(border.next(edge))] - origin;
    const Vec2 toPoint = positions[at(point)] - origin;
    const double share = std::clamp(dot(toPoint, along) / dot(along, along), 0.0, 1.0);
    const Vec2 apart = toPoint - share * along;
    const double distance = length(apart);
    return {point, edge, share, (1.0 / distance) * apart, distance};
}

bool BorderGap::isOutside(const Border& border, std::span<const Vec2> positions) const
{
    const int end = border.next(edge);
    if (share > 0.0 && share < 1.0)
        return cross(positions[at(end)] - positions[at(edge)], normal) < 0.0;
    const int nearest = share > 0.0 ? end : edge;
    for (const int p : border.pointsOfSameVertex(nearest))
        if (pointsIntoSurface(positions[at(border.next(p))] - positions[at(p)],
                              positions[at(border.previous(p))] - positions[at(p)], normal))
            return false;
    return true;
}

Spring BorderGap::spring(const Border& border, double slope, double curvature) const
{
    Spring spring;
    spring.count = 3;
    spring.nodes = {border.vertexOf(point), border.vertexOf(edge),
                    border.vertexOf(border.next(edge))};
    spring.directions = {normal, (share - 1.0) * normal, -share * normal};
    spring.slope = slope;
    spring.curvature = curvature;
    return spring;
}

Spring BorderGap::brake(const Border& border, double work) const
{
    return spring(border, 0.0, work / (distance * distance));
}

void BorderGap::addPairs(const Border& border, std::vector<NodePair>& pairs) const
{
    const int vertex = border.vertexOf(point);
    int p = border.previous(edge);
    for (int i = 0; i < 4; ++i, p = border.next(p))
        if (border.vertexOf(p) != vertex)
            pairs.push_back({vertex, border.vertexOf(p)});
}

std::vector<BorderGap> narrowGaps(const Border& border, std::span<const Vec2> positions)
{
    std::vector<BorderGap> narrow(positions.size(), {-1, -1, 0.0, {}, narrowGap});
    const auto look = [&](int point, int edge) {
        if (border.touches(point, edge))
            return;
        const BorderGap gap = gapBetween(border, positions, point, edge);
        if (gap.distance > 0.0 && gap.distance < narrow[at(point)].distance &&
            gap.distance < narrowPerWay * border.wayToEdge(point, edge) &&
            gap.isOutside(border, positions))
            narrow[at(point)] = gap;
    };
    // Every point is the beginning of one edge.
    edgeBoxes(border, positions).forEachNear(narrowGap, [&](int p, int q) {
        look(p, q);
        look(q, p);
        return true;
    });
    std::erase_if(narrow, [](const BorderGap& gap) { return gap.point < 0; });
    return narrow;
}

BoxPairs edgeBoxes(const Border& border, std::span<const Vec2> positions)
{
    std::vector<Box2> boxes(positions.size());
    for (int p = 0; p < border.size(); ++p) {
        boxes[at(p)].add(positions[at(p)]);
        boxes[at(p)].add(positions[at(border.next(p))]);
    }
    return BoxPairs(std::move(boxes));
}

} // namespace unfold3d

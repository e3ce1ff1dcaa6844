#include "UVUtils/editing/CutSides.h"

#include <cmath>
#include <cstddef>

namespace
{

/// Where a walk around a vertex begins, and which way it goes.
struct WalkStart
{
    std::size_t corner;
    bool isForward;
};

unsigned int otherEnd(const Edge& edge, unsigned int vertex)
{
    return edge.first == vertex ? edge.second : edge.first;
}

/// At the first corner that has the start edge, into its triangle. An edge between two corners is
/// the second of the earlier one, so there the walk goes backward.
std::optional<WalkStart> findStart(std::span<const CutCorner> ring, unsigned int farEnd)
{
    for (std::size_t i = 0; i < ring.size(); ++i)
        if (ring[i].first == farEnd || ring[i].second == farEnd)
            return WalkStart{i, ring[i].first == farEnd};
    return std::nullopt;
}

/// Calls `visit` with each corner once, and the far ends of the edges by which the walk comes into
/// its triangle and leaves it.
template <class Visit>
void walkAround(std::span<CutCorner> ring, const WalkStart& start, const Visit& visit)
{
    std::size_t i = start.corner;
    for (std::size_t n = 0; n < ring.size(); ++n) {
        CutCorner& corner = ring[i];
        if (start.isForward) {
            visit(corner, corner.first, corner.second);
            i = i + 1 == ring.size() ? 0 : i + 1;
        } else {
            visit(corner, corner.second, corner.first);
            i = (i == 0 ? ring.size() : i) - 1;
        }
    }
}

/// Writes the sides of the corners; returns the highest.
unsigned int numberSidesOf(unsigned int vertex, const WalkStart& start, const CutVertices& cut,
                           std::span<CutCorner> ring)
{
    unsigned int side = 0;
    std::optional<unsigned int> cameOut;
    walkAround(ring, start, [&](CutCorner& corner, unsigned int in, unsigned int out) {
        if (cameOut && (in != *cameOut || cut.isCut(Edge(vertex, in))))
            ++side;
        corner.side = side;
        cameOut = out;
    });
    return side;
}

void appendDirections(unsigned int vertex, const WalkStart& start, std::span<CutCorner> ring,
                      std::span<const osg::Vec2f> uvs, std::vector<osg::Vec2f>& directions)
{
    const auto uvOf = [&](unsigned int id) { return id < uvs.size() ? uvs[id] : osg::Vec2f(); };
    const auto directionTo = [&](unsigned int farEnd) {
        const osg::Vec2f unit = unitDirection(uvOf(farEnd) - uvOf(vertex));
        return std::isfinite(unit[0]) && std::isfinite(unit[1]) ? unit : osg::Vec2f();
    };
    const std::size_t firstSide = directions.size();
    walkAround(ring, start, [&](const CutCorner& corner, unsigned int in, unsigned int out) {
        if (firstSide + corner.side == directions.size())
            directions.push_back(directionTo(in));
        directions.back() += directionTo(out);
    });
}

} // namespace

CutSides numberSides(const CutVertices& cut, CutRings& rings,
                     const std::optional<std::span<const osg::Vec2f>>& uvs)
{
    CutSides sides;
    sides.copyCounts.resize(cut.ids.size());
    for (std::size_t i = 0; i < cut.ids.size(); ++i) {
        const unsigned int vertex = cut.ids[i];
        const auto start = findStart(rings[i], otherEnd(cut.startEdges[i], vertex));
        if (!start)
            continue;
        sides.copyCounts[i] = numberSidesOf(vertex, *start, cut, rings[i]);
        if (uvs && sides.copyCounts[i] > 0)
            appendDirections(vertex, *start, rings[i], *uvs, sides.directions);
    }
    return sides;
}

osg::Vec2f unitDirection(const osg::Vec2f& vector)
{
    const float length = vector.length();
    return length < osg::Vec2f::ShortestLength ? vector
                                               : osg::Vec2f(vector[0] / length, vector[1] / length);
}

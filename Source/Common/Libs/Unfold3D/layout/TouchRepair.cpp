#include "Unfold3D/layout/TouchRepair.h"

#include "Unfold3D/base/BoxPairs.h"
#include "Unfold3D/base/Segments.h"
#include "Unfold3D/mesh/HalfEdges.h"

#include <algorithm>

namespace unfold3d
{

namespace
{

/// Rounds of moves; every few rounds the strides become longer.
constexpr int maxRounds = 24;
constexpr int roundsPerStride = 6;
/// Edges within this many steps of each other are watched: no vertex gets much further.
constexpr double watchedSteps = 64.0;

Vec2 at(std::span<const Vec2> uv, int v)
{
    return uv[static_cast<std::size_t>(v)];
}

bool doTouch(const std::array<int, 2>& p, const std::array<int, 2>& q, std::span<const Vec2> uv)
{
    for (std::size_t i = 0; i < 2; ++i)
        for (std::size_t j = 0; j < 2; ++j)
            if (p[i] == q[j])
                return doSpokesOverlap(at(uv, p[i]), at(uv, p[1 - i]), at(uv, q[1 - j]));
    return doSegmentsMeet(at(uv, p[0]), at(uv, p[1]), at(uv, q[0]), at(uv, q[1]));
}

double distanceToSegment(Vec2 p, Vec2 a, Vec2 b)
{
    const Vec2 along = b - a;
    const double squaredLength = dot(along, along);
    const double share = squaredLength > 0.0 ? dot(p - a, along) / squaredLength : 0.0;
    return length(p - (a + std::clamp(share, 0.0, 1.0) * along));
}

/// How far two edges that touch are in each other: the least way of an end to the other edge.
double depthOf(const std::array<int, 2>& p, const std::array<int, 2>& q, std::span<const Vec2> uv)
{
    const Vec2 a = at(uv, p[0]);
    const Vec2 b = at(uv, p[1]);
    const Vec2 c = at(uv, q[0]);
    const Vec2 d = at(uv, q[1]);
    return std::min(std::min(distanceToSegment(a, c, d), distanceToSegment(b, c, d)),
                    std::min(distanceToSegment(c, a, b), distanceToSegment(d, a, b)));
}

BoxPairs boxesOf(const BorderEdges& border, std::span<const Vec2> uv)
{
    std::vector<Box2> boxes(border.size());
    for (std::size_t i = 0; i < border.size(); ++i)
        for (const int v : border[i])
            boxes[i].add(at(uv, v));
    return BoxPairs(std::move(boxes));
}

using EdgePair = std::array<int, 2>;

std::vector<EdgePair> pairsWithin(double margin, const BorderEdges& border,
                                  std::span<const Vec2> uv)
{
    std::vector<EdgePair> pairs;
    boxesOf(border, uv).forEachNear(margin, [&](int p, int q) {
        pairs.push_back({p, q});
        return true;
    });
    return pairs;
}

/// The watched pairs at each vertex that is an end of one of their edges.
OffsetArray<int> pairsByVertex(const std::vector<EdgePair>& pairs, const BorderEdges& border,
                               std::size_t vertexCount)
{
    std::vector<int> vertexOfEntry;
    for (const auto& [p, q] : pairs)
        for (const int edge : {p, q}) {
            const auto& ends = border[static_cast<std::size_t>(edge)];
            vertexOfEntry.insert(vertexOfEntry.end(), ends.begin(), ends.end());
        }
    OffsetArray<int> byVertex = groupByKey(vertexOfEntry, static_cast<int>(vertexCount));
    constexpr int entriesOfPair = 4;
    for (int& entry : byVertex.flat)
        entry /= entriesOfPair;
    return byVertex;
}

} // namespace

BorderEdges borderEdges(std::span<const Triangle> triangles, int vertexCount)
{
    const HalfEdges edges = pairHalfEdges(triangles, vertexCount);
    BorderEdges border;
    for (int h = 0; h < static_cast<int>(edges.twin.size()); ++h)
        if (edges.isBorder(h))
            border.push_back({originOf(triangles, h), targetOf(triangles, h)});
    return border;
}

int countTouches(const BorderEdges& border, std::span<const Vec2> uv)
{
    int count = 0;
    boxesOf(border, uv).forEachNear(0.0, [&](int p, int q) {
        count +=
            doTouch(border[static_cast<std::size_t>(p)], border[static_cast<std::size_t>(q)], uv);
        return true;
    });
    return count;
}

void repairTouches(const BorderEdges& border, std::span<const Vec2> uv, VertexStars& stars)
{
    const std::vector<EdgePair> pairs = pairsWithin(watchedSteps * stars.step(), border, uv);
    const OffsetArray<int> pairsOfVertex = pairsByVertex(pairs, border, uv.size());
    const auto touches = [&](const EdgePair& pair) {
        return doTouch(border[static_cast<std::size_t>(pair[0])],
                       border[static_cast<std::size_t>(pair[1])], uv);
    };
    // Sound triangles first, then few touches, then shallow ones.
    const auto rankAt = [&](int v) {
        std::array<double, 3> rank{stars.safetyAt(v)[0] > 0.0 ? 1.0 : 0.0, 0.0, 0.0};
        for (const int i : pairsOfVertex[v]) {
            const EdgePair& pair = pairs[static_cast<std::size_t>(i)];
            if (!touches(pair))
                continue;
            rank[1] -= 1.0;
            rank[2] -= depthOf(border[static_cast<std::size_t>(pair[0])],
                               border[static_cast<std::size_t>(pair[1])], uv);
        }
        return rank;
    };

    for (int round = 0; round < maxRounds; ++round) {
        const double stride = std::ldexp(stars.step(), round / roundsPerStride);
        std::vector<int> vertices;
        for (const EdgePair& pair : pairs)
            if (touches(pair))
                for (const int edge : pair)
                    for (const int v : border[static_cast<std::size_t>(edge)])
                        vertices.push_back(v);
        if (vertices.empty())
            return;
        std::sort(vertices.begin(), vertices.end());
        vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
        for (const int v : vertices)
            stars.moveToBest(v, stride, [&] { return rankAt(v); });
    }
}

} // namespace unfold3d

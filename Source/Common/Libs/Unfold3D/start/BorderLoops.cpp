#include "Unfold3D/start/BorderLoops.h"

#include "Unfold3D/base/DisjointSets.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <utility>

// Cut at all vertices where fans meet, the island falls into sheets whose borders run from fan to
// fan of one sheet. Each sheet has to be a disk with holes. Then the fans of each vertex are laid
// around it, so that the border goes on from each fan to the next, and Euler's formula tells
// whether all this fits into the plane. The order in which they lie around the vertex in space
// mostly does. Where it doesn't, they are joined one after the other: a join exchanges the
// successors of two border half-edges at their vertex, which splits their loop in two or makes one
// of their two loops.

namespace unfold3d
{

namespace
{

/// Steps along the border after which the search for a place of every fan is given up.
constexpr std::int64_t maxWalked = 20'000'000;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// The border half-edge with which the walk goes on that comes in on h, within one fan.
int successorInFan(const HalfEdges& edges, int h)
{
    int out = nextHalfEdge(h);
    while (!edges.isBorder(out))
        out = nextHalfEdge(edges.twin[at(out)]);
    return out;
}

/// Number of triangles of the fan that the border enters on h.
int fanSize(const HalfEdges& edges, int h)
{
    int size = 1;
    for (int out = nextHalfEdge(h); !edges.isBorder(out); ++size)
        out = nextHalfEdge(edges.twin[at(out)]);
    return size;
}

int closedFanSize(const HalfEdges& edges, int first)
{
    int size = 1;
    for (int out = nextHalfEdge(edges.twin[at(first)]); out != first; ++size)
        out = nextHalfEdge(edges.twin[at(out)]);
    return size;
}

class BorderWalk
{
public:
    BorderWalk(const IslandMesh& mesh, const HalfEdges& edges);

    Obstacle inspectSheets() const;
    void layFansAsInSpace();
    /// False when it took too long.
    bool joinFansOneByOne();
    bool fitsThePlane() const;
    OffsetArray<int> loops() const;

private:
    int vertexAt(int h) const { return targetOf(mesh_.triangles, h); }
    bool hasClosedFanBesideOthers() const;
    void cutFansApart();
    void addUpFan(int incoming, Vec3& edgeSum, Vec3& normalSum) const;
    std::vector<int> fansAround(int v) const;
    bool joinFansAt(std::span<const int> incoming);
    void join(int incomingA, int incomingB)
    {
        std::swap(successor_[at(incomingA)], successor_[at(incomingB)]);
    }
    std::vector<int> walkFrom(int h);
    /// Which of the gaps, all entered on the way into one vertex, the fan entered on `incoming` is
    /// best laid into.
    int bestGapFor(int incoming, std::span<const int> gaps, bool& onOneLoop);

    const IslandMesh& mesh_;
    const HalfEdges& edges_;
    std::vector<int> border_;           ///< border half-edges, ascending
    std::vector<int> successor_;        ///< [half-edge]
    OffsetArray<int> incomingOfVertex_; ///< [vertex] border half-edges that end there
    std::int64_t walked_ = 0;           ///< half-edges that walkFrom has passed
};

BorderWalk::BorderWalk(const IslandMesh& mesh, const HalfEdges& edges)
    : mesh_(mesh), edges_(edges), successor_(edges.twin.size(), -1)
{
    std::vector<int> endOf(edges.twin.size(), -1);
    for (int h = 0; h < static_cast<int>(edges.twin.size()); ++h) {
        if (!edges.isBorder(h))
            continue;
        border_.push_back(h);
        endOf[at(h)] = vertexAt(h);
    }
    incomingOfVertex_ = groupByKey(endOf, mesh.vertexCount());
    cutFansApart();
}

void BorderWalk::cutFansApart()
{
    for (const int h : border_)
        successor_[at(h)] = successorInFan(edges_, h);
}

/// A closed fan fills the plane around its vertex, so nothing else can hang on it.
bool BorderWalk::hasClosedFanBesideOthers() const
{
    std::vector<int> cornerCount(mesh_.positions.size(), 0);
    std::vector<int> someCorner(mesh_.positions.size(), -1);
    for (int h = 0; h < static_cast<int>(successor_.size()); ++h) {
        const int v = originOf(mesh_.triangles, h);
        ++cornerCount[at(v)];
        someCorner[at(v)] = h;
    }
    for (int v = 0; v < mesh_.vertexCount(); ++v) {
        int known = 0;
        for (const int h : incomingOfVertex_[v])
            known += fanSize(edges_, h);
        if (known == 0)
            known = closedFanSize(edges_, someCorner[at(v)]);
        if (known != cornerCount[at(v)])
            return true;
    }
    return false;
}

Obstacle BorderWalk::inspectSheets() const
{
    if (border_.empty())
        return Obstacle::Closed;
    DisjointSets sheets(mesh_.triangleCount());
    for (int h = 0; h < static_cast<int>(successor_.size()); ++h)
        if (!edges_.isBorder(h))
            sheets.join(h / 3, edges_.twin[at(h)] / 3);

    // V - E + F, and 2 less one for each loop, of every sheet. Twice, as an inner edge is seen
    // twice.
    std::vector<int> twiceEuler(mesh_.triangles.size(), 0);
    std::vector<int> loopCount(mesh_.triangles.size(), 0);
    const auto sheetOf = [&](int h) { return at(sheets.find(h / 3)); };
    for (int h = 0; h < static_cast<int>(successor_.size()); ++h)
        twiceEuler[sheetOf(h)] -= edges_.isBorder(h) ? 2 : 1;
    for (int t = 0; t < mesh_.triangleCount(); ++t)
        twiceEuler[sheetOf(3 * t)] += 2;
    for (const int h : border_) // an open fan
        twiceEuler[sheetOf(h)] += 2;
    std::vector<char> isSeen(mesh_.positions.size(), 0);
    for (int h = 0; h < static_cast<int>(successor_.size()); ++h) {
        const int v = originOf(mesh_.triangles, h);
        if (isSeen[at(v)] || !incomingOfVertex_[v].empty())
            continue;
        isSeen[at(v)] = 1; // a closed fan
        twiceEuler[sheetOf(h)] += 2;
    }
    const OffsetArray<int> sheetLoops = loops();
    for (int loop = 0; loop < sheetLoops.size(); ++loop)
        ++loopCount[sheetOf(sheetLoops[loop].front())];

    bool hasHandle = false;
    for (int t = 0; t < mesh_.triangleCount(); ++t) {
        if (sheets.find(t) != t)
            continue;
        if (loopCount[at(t)] == 0)
            return Obstacle::Closed;
        hasHandle |= twiceEuler[at(t)] != 4 - 2 * loopCount[at(t)];
    }
    // Euler's formula has missed the closed fans that this asks for.
    if (hasClosedFanBesideOthers())
        return Obstacle::TouchesItself;
    return hasHandle ? Obstacle::Handle : Obstacle::None;
}

std::vector<int> BorderWalk::walkFrom(int h)
{
    std::vector<int> walk;
    int present = h;
    do {
        walk.push_back(present);
        present = successor_[at(present)];
    } while (present != h);
    walked_ += static_cast<std::int64_t>(walk.size());
    return walk;
}

int BorderWalk::bestGapFor(int incoming, std::span<const int> gaps, bool& onOneLoop)
{
    std::vector<int> verticesOfWalk;
    for (const int h : walkFrom(incoming)) {
        if (std::find(gaps.begin(), gaps.end(), h) != gaps.end()) {
            onOneLoop = true;
            return h;
        }
        verticesOfWalk.push_back(vertexAt(h));
    }
    onOneLoop = false;
    std::sort(verticesOfWalk.begin(), verticesOfWalk.end());

    // Another part of the island. It goes where it also touches elsewhere, else to the longest
    // loop.
    int best = gaps.front();
    std::pair<std::ptrdiff_t, std::size_t> bestRank{-1, 0};
    for (const int gap : gaps) {
        const std::vector<int> walk = walkFrom(gap);
        const auto shared = std::count_if(walk.begin(), walk.end(), [&](int h) {
            return std::binary_search(verticesOfWalk.begin(), verticesOfWalk.end(), vertexAt(h));
        });
        const std::pair rank{shared, walk.size()};
        if (rank > bestRank) {
            bestRank = rank;
            best = gap;
        }
    }
    return best;
}

bool BorderWalk::joinFansAt(std::span<const int> incoming)
{
    std::vector<int> joined(1, incoming.front());
    std::vector<int> waiting(incoming.begin() + 1, incoming.end());
    while (!waiting.empty()) {
        // A fan on a loop with a joined one can only go into that gap; the others may choose, and
        // do so after.
        std::size_t next = 0;
        int gap = -1;
        bool isForced = false;
        for (std::size_t i = 0; i < waiting.size() && !isForced; ++i) {
            if (walked_ > maxWalked)
                return false;
            const int candidate = bestGapFor(waiting[i], joined, isForced);
            if (isForced || gap < 0) {
                gap = candidate;
                next = i;
            }
        }
        join(gap, waiting[next]);
        joined.push_back(waiting[next]);
        waiting.erase(waiting.begin() + static_cast<std::ptrdiff_t>(next));
    }
    return true;
}

bool BorderWalk::joinFansOneByOne()
{
    cutFansApart();
    // Two fans can be joined in one way only; those with a choice come after, when more is known.
    for (int v = 0; v < mesh_.vertexCount(); ++v)
        if (incomingOfVertex_[v].size() == 2)
            join(incomingOfVertex_[v][0], incomingOfVertex_[v][1]);
    for (int v = 0; v < mesh_.vertexCount(); ++v)
        if (incomingOfVertex_[v].size() > 2 && !joinFansAt(incomingOfVertex_[v]))
            return false;
    return true;
}

/// Adds up the edges and the normals of the fan that the border enters on `incoming`.
void BorderWalk::addUpFan(int incoming, Vec3& edgeSum, Vec3& normalSum) const
{
    const auto position = [&](int v) { return mesh_.positions[at(v)]; };
    const Vec3 centre = position(vertexAt(incoming));
    for (int out = nextHalfEdge(incoming);; out = nextHalfEdge(edges_.twin[at(out)])) {
        const Vec3 first = position(vertexAt(out)) - centre;
        const Vec3 last = position(originOf(mesh_.triangles, previousHalfEdge(out))) - centre;
        edgeSum = edgeSum + first + last;
        normalSum = normalSum + cross(first, last);
        if (edges_.isBorder(out))
            return;
    }
}

/// The fans of a vertex, named by their incoming half-edges, in the order in which they lie around
/// its mean normal, counter-clockwise.
std::vector<int> BorderWalk::fansAround(int v) const
{
    const std::span<const int> fans = incomingOfVertex_[v];
    std::vector<Vec3> directions(fans.size());
    Vec3 normal;
    for (std::size_t i = 0; i < fans.size(); ++i)
        addUpFan(fans[i], directions[i], normal);

    const bool isAlongX = std::abs(normal.x) > std::abs(normal.y);
    const Vec3 axisX = cross(isAlongX ? Vec3{0, 1, 0} : Vec3{1, 0, 0}, normal);
    const Vec3 axisY = cross(normal, axisX);
    const auto angleOf = [&, lengthX = length(axisX), lengthY = length(axisY)](Vec3 d) {
        return std::atan2(dot(axisY, d) * lengthX, dot(axisX, d) * lengthY);
    };
    std::vector<std::pair<double, int>> byAngle;
    byAngle.reserve(fans.size());
    for (std::size_t i = 0; i < fans.size(); ++i)
        byAngle.emplace_back(angleOf(directions[i]), fans[i]);
    std::sort(byAngle.begin(), byAngle.end());
    std::vector<int> order;
    order.reserve(byAngle.size());
    for (const auto& [angle, fan] : byAngle)
        order.push_back(fan);
    return order;
}

void BorderWalk::layFansAsInSpace()
{
    for (int v = 0; v < mesh_.vertexCount(); ++v) {
        if (incomingOfVertex_[v].size() < 2)
            continue;
        // The border comes in along the last edge of a fan and goes on along the first edge of the
        // next one.
        const std::vector<int> fans = fansAround(v);
        for (std::size_t i = 0; i < fans.size(); ++i)
            successor_[at(fans[i])] = successorInFan(edges_, fans[(i + 1) % fans.size()]);
    }
}

bool BorderWalk::fitsThePlane() const
{
    const auto borderCount = static_cast<std::ptrdiff_t>(border_.size());
    const auto halfEdgeCount = static_cast<std::ptrdiff_t>(successor_.size());
    const std::ptrdiff_t edgeCount = (halfEdgeCount + borderCount) / 2;
    return mesh_.vertexCount() - edgeCount + mesh_.triangleCount() + loops().size() == 2;
}

OffsetArray<int> BorderWalk::loops() const
{
    OffsetArray<int> result;
    std::vector<char> isWalked(successor_.size(), 0);
    for (const int first : border_) {
        if (isWalked[at(first)])
            continue;
        for (int h = first; !isWalked[at(h)]; h = successor_[at(h)]) {
            isWalked[at(h)] = 1;
            result.flat.push_back(h);
        }
        result.closeList();
    }
    return result;
}

} // namespace

BorderLoops findBorderLoops(const IslandMesh& mesh, const HalfEdges& edges)
{
    BorderWalk walk(mesh, edges);
    BorderLoops result;
    result.obstacle = walk.inspectSheets();
    if (result.obstacle != Obstacle::None)
        return result;
    walk.layFansAsInSpace();
    if (!walk.fitsThePlane() && !(walk.joinFansOneByOne() && walk.fitsThePlane())) {
        result.obstacle = Obstacle::TouchesItself;
        return result;
    }
    result.loops = walk.loops();
    return result;
}

} // namespace unfold3d

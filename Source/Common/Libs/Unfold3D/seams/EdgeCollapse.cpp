#include "Unfold3D/seams/EdgeCollapse.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// Cosine of the most that a triangle may turn by.
constexpr double leastCosine = 0.7;
/// Least height of a triangle that has moved, as a share of its longest side, but for one that was
/// as thin before.
constexpr double leastHeight = 0.15;
/// A triangle that is thinner has a shape and a side that it faces by rounding only: it keeps none.
constexpr double noHeight = 1e-3;
/// Shares by which measures may differ and count as equal: on regular meshes most moves leave them
/// as they are but for rounding, which shall not decide.
constexpr double slack = 1e-3;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

struct Shape
{
    Vec3 normal; ///< as long as twice the area
    double longestSquared;

    double height() const { return longestSquared > 0.0 ? length(normal) / longestSquared : 0.0; }
    bool isThin() const { return height() < noHeight; }
};

Shape shapeOf(Vec3 a, Vec3 b, Vec3 c)
{
    const Vec3 ab = b - a;
    const Vec3 ac = c - a;
    const Vec3 bc = c - b;
    return {cross(ab, ac), std::max({dot(ab, ab), dot(ac, ac), dot(bc, bc)})};
}

bool isSound(const Shape& before, const Shape& after, double longest)
{
    if (after.longestSquared > (1.0 + slack) * std::max(longest * longest, before.longestSquared))
        return false;
    if (before.isThin())
        return true;
    const double lengths = length(before.normal) * length(after.normal);
    if (dot(before.normal, after.normal) < leastCosine * lengths)
        return false;
    return after.height() >= (1.0 - slack) * std::min(leastHeight, before.height());
}

std::size_t commonCount(std::span<const int> a, std::span<const int> b)
{
    std::size_t count = 0;
    for (std::size_t i = 0, k = 0; i < a.size() && k < b.size();) {
        count += a[i] == b[k] ? 1 : 0;
        const bool nextA = a[i] <= b[k];
        k += b[k] <= a[i] ? 1 : 0;
        i += nextA ? 1 : 0;
    }
    return count;
}

} // namespace

EdgeCollapse::EdgeCollapse(std::span<const Vec3> positions, std::span<const Triangle> triangles)
    : positions_(positions.begin(), positions.end()),
      triangles_(triangles.begin(), triangles.end()), isGone_(triangles.size(), 0),
      isOnBorder_(positions.size(), 0), valence_(positions.size(), 0), first_(positions.size(), -1),
      last_(positions.size(), -1), next_(3 * triangles.size(), -1)
{
    for (int corner = 0; corner < static_cast<int>(next_.size()); ++corner) {
        const std::size_t v = at(triangles_[at(corner / 3)][at(corner % 3)]);
        (first_[v] < 0 ? first_[v] : next_[at(last_[v])]) = corner;
        last_[v] = corner;
        ++valence_[v];
    }
    for (std::size_t v = 0; v < first_.size(); ++v) {
        gather(static_cast<int>(v), ring_);
        isOnBorder_[v] = static_cast<char>(ring_.vertices.size() > ring_.triangles.size());
    }
}

void EdgeCollapse::gather(int vertex, Ring& ring)
{
    ring.triangles.clear();
    ring.vertices.clear();
    int* link = &first_[at(vertex)];
    for (int corner = *link; corner >= 0; corner = *link) {
        if (isGone_[at(corner / 3)]) {
            *link = next_[at(corner)];
            continue;
        }
        ring.triangles.push_back(corner / 3);
        for (const int v : triangles_[at(corner / 3)])
            if (v != vertex)
                ring.vertices.push_back(v);
        last_[at(vertex)] = corner;
        link = &next_[at(corner)];
    }
    std::sort(ring.vertices.begin(), ring.vertices.end());
    ring.vertices.erase(std::unique(ring.vertices.begin(), ring.vertices.end()),
                        ring.vertices.end());
}

std::span<const int> EdgeCollapse::neighboursOf(int vertex)
{
    gather(vertex, ring_);
    ringOf_ = vertex;
    return ring_.vertices;
}

bool EdgeCollapse::canMove(int vertex, int onto, double longest)
{
    if (ringOf_ != vertex)
        neighboursOf(vertex);
    return keepsShape(vertex, onto, longest) && keepsConnections(vertex, onto);
}

bool EdgeCollapse::keepsConnections(int vertex, int onto)
{
    int shared = 0;
    for (const int t : ring_.triangles) {
        const Triangle& corners = triangles_[at(t)];
        if (std::find(corners.begin(), corners.end(), onto) == corners.end())
            continue;
        ++shared;
        for (const int v : corners)
            if (v != vertex && v != onto && valence(v) - 1 < (isOnBorder(v) ? 1 : 3))
                return false;
    }
    // A vertex of the border moves along it.
    if (shared != (isOnBorder(vertex) ? 1 : 2))
        return false;
    if (valence(vertex) + valence(onto) - 2 * shared < (isOnBorder(onto) ? 1 : 3))
        return false;
    gather(onto, otherRing_);
    return commonCount(ring_.vertices, otherRing_.vertices) == static_cast<std::size_t>(shared);
}

bool EdgeCollapse::keepsShape(int vertex, int onto, double longest) const
{
    for (const int t : ring_.triangles) {
        Triangle corners = triangles_[at(t)];
        if (std::find(corners.begin(), corners.end(), onto) != corners.end())
            continue;
        const auto shape = [&] {
            return shapeOf(positions_[at(corners[0])], positions_[at(corners[1])],
                           positions_[at(corners[2])]);
        };
        const Shape before = shape();
        std::replace(corners.begin(), corners.end(), vertex, onto);
        if (!isSound(before, shape(), longest))
            return false;
    }
    return true;
}

void EdgeCollapse::move(int vertex, int onto)
{
    if (ringOf_ != vertex)
        neighboursOf(vertex);
    for (const int t : ring_.triangles) {
        Triangle& corners = triangles_[at(t)];
        if (std::find(corners.begin(), corners.end(), onto) == corners.end()) {
            std::replace(corners.begin(), corners.end(), vertex, onto);
            ++valence_[at(onto)];
            continue;
        }
        isGone_[at(t)] = 1;
        for (const int v : corners)
            --valence_[at(v)];
    }
    next_[at(last_[at(onto)])] = first_[at(vertex)];
    last_[at(onto)] = last_[at(vertex)];
    first_[at(vertex)] = -1;
    ringOf_ = -1;
}

std::vector<Triangle> EdgeCollapse::triangles() const
{
    std::vector<Triangle> left;
    for (std::size_t t = 0; t < triangles_.size(); ++t)
        if (!isGone_[t])
            left.push_back(triangles_[t]);
    return left;
}

} // namespace unfold3d

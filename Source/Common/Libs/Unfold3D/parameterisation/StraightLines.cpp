#include "Unfold3D/parameterisation/StraightLines.h"

#include "Unfold3D/base/DisjointSets.h"
#include "Unfold3D/base/OffsetArray.h"
#include "Unfold3D/mesh/HalfEdges.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// How far apart fixed vertices of one line may be, in an island of area 1.
constexpr double straightEnough = 1e-6;

using Line = StraightLines::Line;

/// [vertex] the line along one axis that it is on, or -1.
using LineOfVertex = std::vector<int>;

LineOfVertex lineOfVertex(std::span<const Line> lines, Axis axis, int vertexCount)
{
    LineOfVertex result(at(vertexCount), -1);
    for (std::size_t l = 0; l < lines.size(); ++l)
        if (lines[l].axis == axis)
            for (const int vertex : lines[l].vertices)
                result[at(vertex)] = static_cast<int>(l);
    return result;
}

/// Lines of at least two vertices, by their lowest.
void joinLines(std::span<const StraightLine> asked, Axis axis, int vertexCount,
               std::vector<Line>& lines)
{
    DisjointSets sets(vertexCount);
    std::vector<char> isAsked(at(vertexCount), 0);
    for (const StraightLine& line : asked)
        if (line.horizontal == (axis == Axis::V))
            for (const int vertex : line.vertices) {
                sets.join(vertex, line.vertices.front());
                isAsked[at(vertex)] = 1;
            }
    std::vector<int> set(at(vertexCount), -1);
    for (int v = 0; v < vertexCount; ++v)
        if (isAsked[at(v)])
            set[at(v)] = sets.find(v);
    const OffsetArray<int> members = groupByKey(set, vertexCount);
    for (int v = 0; v < vertexCount; ++v)
        if (members[v].size() > 1)
            lines.push_back({axis, {members[v].begin(), members[v].end()}, {}});
}

/// A triangle with all corners on one line would fold. Where one of them belongs to no other
/// triangle, the line does without it. Adds the vertices that left their lines to `tips`.
void leaveOutEars(const IslandMesh& mesh, Axis axis, std::vector<Line>& lines,
                  std::vector<std::vector<int>>& tips)
{
    LineOfVertex lineOf = lineOfVertex(lines, axis, mesh.vertexCount());
    std::vector<int> triangleCount(lineOf.size(), 0);
    for (const Triangle& corners : mesh.triangles)
        for (const int v : corners)
            ++triangleCount[at(v)];
    for (const auto& [a, b, c] : mesh.triangles) {
        const int line = lineOf[at(a)];
        if (line < 0 || line != lineOf[at(b)] || line != lineOf[at(c)])
            continue;
        for (const int v : {a, b, c})
            if (triangleCount[at(v)] == 1 && lineOf[at(v)] >= 0) {
                lineOf[at(v)] = -1;
                std::erase(lines[at(line)].vertices, v);
                tips.push_back({v});
                break;
            }
    }
}

/// Calls visit(a, b) once for each edge of the mesh.
template <class Visit>
void forEachEdge(const IslandMesh& mesh, const Visit& visit)
{
    const HalfEdges edges = pairHalfEdges(mesh.triangles, mesh.vertexCount());
    for (int h = 0; h < static_cast<int>(edges.twin.size()); ++h)
        if (edges.twin[at(h)] < h)
            visit(originOf(mesh.triangles, h), targetOf(mesh.triangles, h));
}

/// On a straight line no vertex has three neighbours, and no way leads back to its beginning.
std::vector<char> runStraight(const IslandMesh& mesh, std::span<const Line> lines)
{
    std::vector<char> isStraight(lines.size(), 1);
    for (const Axis axis : {Axis::U, Axis::V}) {
        const LineOfVertex lineOf = lineOfVertex(lines, axis, mesh.vertexCount());
        std::vector<int> neighbours(lineOf.size(), 0);
        DisjointSets chains(mesh.vertexCount());
        forEachEdge(mesh, [&](int a, int b) {
            const int line = lineOf[at(a)];
            if (line < 0 || line != lineOf[at(b)])
                return;
            const bool branches = ++neighbours[at(a)] > 2 || ++neighbours[at(b)] > 2;
            if (!chains.join(a, b) || branches)
                isStraight[at(line)] = 0;
        });
    }
    return isStraight;
}

/// Two vertices on the same two lines would have to lie in one place.
std::vector<char> meetOnce(std::span<const Line> lines, int vertexCount)
{
    const LineOfVertex lineOfU = lineOfVertex(lines, Axis::U, vertexCount);
    const LineOfVertex lineOfV = lineOfVertex(lines, Axis::V, vertexCount);
    std::vector<std::array<int, 2>> meetings;
    for (std::size_t v = 0; v < lineOfU.size(); ++v)
        if (lineOfU[v] >= 0 && lineOfV[v] >= 0)
            meetings.push_back({lineOfU[v], lineOfV[v]});
    std::sort(meetings.begin(), meetings.end());
    std::vector<char> isFine(lines.size(), 1);
    for (std::size_t i = 1; i < meetings.size(); ++i)
        if (meetings[i] == meetings[i - 1])
            isFine[at(std::max(meetings[i][0], meetings[i][1]))] = 0;
    return isFine;
}

/// Says why lines are not straight; nothing where there are none.
void warnOf(std::span<const Line> lines, const char* reason, std::vector<LayoutWarning>& warnings)
{
    if (lines.empty())
        return;
    LayoutWarning& warning = warnings.emplace_back(
        (lines.size() == 1 ? "1 line" : std::to_string(lines.size()) + " lines") +
        std::string(" of constrained edges ") + reason + "; left as they fell.");
    for (const Line& line : lines)
        warning.places.push_back(line.vertices);
}

} // namespace

StraightLines::StraightLines(const IslandMesh& mesh, std::span<const StraightLine> asked,
                             std::vector<LayoutWarning>& warnings)
    : vertexCount_(mesh.vertexCount())
{
    if (asked.empty())
        return;
    joinLines(asked, Axis::V, vertexCount_, lines_);
    joinLines(asked, Axis::U, vertexCount_, lines_);

    std::vector<std::vector<int>> tips;
    leaveOutEars(mesh, Axis::V, lines_, tips);
    leaveOutEars(mesh, Axis::U, lines_, tips);
    if (!tips.empty())
        warnings.emplace_back(
            std::to_string(tips.size()) + (tips.size() == 1 ? " triangle has" : " triangles have") +
                " two constrained edges that would fold it on one line; its tip was left out.",
            tips);
    warnOf(keep(runStraight(mesh, lines_)),
           "can't be straight, since the edges branch or close a ring", warnings);
    warnOf(keep(meetOnce(lines_, vertexCount_)),
           "would meet another one twice, which no two straight lines do", warnings);

    for (Line& line : lines_)
        line.weights.assign(line.vertices.size(), 0.0);
    for (const Axis axis : {Axis::U, Axis::V}) {
        const LineOfVertex lineOf = lineOfVertex(lines_, axis, vertexCount_);
        forEachEdge(mesh, [&](int a, int b) {
            if (lineOf[at(a)] < 0 || lineOf[at(a)] != lineOf[at(b)])
                return;
            segments_.push_back({axis, {a, b}});
            Line& line = lines_[at(lineOf[at(a)])];
            for (const int v : {a, b}) {
                const auto found = std::lower_bound(line.vertices.begin(), line.vertices.end(), v);
                line.weights[static_cast<std::size_t>(found - line.vertices.begin())] +=
                    0.5 * length(mesh.positions[at(b)] - mesh.positions[at(a)]);
            }
        });
    }
    // Vertices without an edge along the line still count.
    const double least = 0.1 / std::sqrt(static_cast<double>(mesh.triangleCount()));
    for (Line& line : lines_)
        for (double& weight : line.weights)
            weight = std::max(weight, least);
}

void StraightLines::fix(std::span<const char> isFixed, std::span<const Vec2> uv,
                        std::vector<LayoutWarning>& warnings)
{
    isFixed_.assign(isFixed.begin(), isFixed.end());
    std::vector<char> isTogether(lines_.size(), 1);
    for (std::size_t l = 0; l < lines_.size(); ++l) {
        Line& line = lines_[l];
        double low = std::numeric_limits<double>::infinity();
        double high = -low;
        for (const int v : line.vertices) {
            if (!isFixedVertex(v))
                continue;
            line.isFixed = true;
            low = std::min(low, coordinate(uv[at(v)], line.axis));
            high = std::max(high, coordinate(uv[at(v)], line.axis));
        }
        isTogether[l] = high - low <= straightEnough;
    }
    warnOf(keep(isTogether),
           "can't be straight, since vertices that are to stay lie beside each other", warnings);
    std::erase_if(lines_, [&](const Line& line) {
        return std::all_of(line.vertices.begin(), line.vertices.end(),
                           [&](int v) { return isFixedVertex(v); });
    });
}

std::vector<Line> StraightLines::keep(std::span<const char> isKept)
{
    std::vector<Line> kept;
    std::vector<Line> others;
    for (std::size_t l = 0; l < lines_.size(); ++l)
        (isKept[l] ? kept : others).push_back(std::move(lines_[l]));
    lines_ = std::move(kept);
    return others;
}

double StraightLines::bestTurn(std::span<const Vec2> uv) const
{
    // Squares of complex numbers: a direction and its opposite count the same, and those across
    // count against them.
    Vec2 sum;
    for (const Segment& segment : segments_) {
        const Vec2 edge = uv[at(segment.vertices[1])] - uv[at(segment.vertices[0])];
        if (edge == Vec2{})
            continue;
        const double weight = (segment.axis == Axis::V ? 1.0 : -1.0) / length(edge);
        sum += weight * Vec2{edge.x * edge.x - edge.y * edge.y, 2.0 * edge.x * edge.y};
    }
    return -0.5 * std::atan2(sum.y, sum.x);
}

void StraightLines::turnAlong(std::vector<Vec2>& uv) const
{
    const double angle = bestTurn(uv);
    const Vec2 axis{std::cos(angle), std::sin(angle)};
    for (Vec2& p : uv)
        p = {axis.x * p.x - axis.y * p.y, axis.y * p.x + axis.x * p.y};
}

void StraightLines::warnOfGivenUp(std::span<const Line> lines, std::vector<LayoutWarning>& warnings)
{
    warnOf(lines, "can't be straight without flipping triangles", warnings);
}

double StraightLines::mean(int line, std::span<const Vec2> uv) const
{
    const Line& held = lines_[at(line)];
    double sum = 0.0;
    double weights = 0.0;
    for (std::size_t i = 0; i < held.vertices.size(); ++i) {
        if (held.isFixed && !isFixedVertex(held.vertices[i]))
            continue;
        sum += held.weights[i] * coordinate(uv[at(held.vertices[i])], held.axis);
        weights += held.weights[i];
    }
    return sum / weights;
}

void StraightLines::straighten(int line, std::vector<Vec2>& uv) const
{
    const double place = mean(line, uv);
    for (const int vertex : lines_[at(line)].vertices)
        if (!isFixedVertex(vertex))
            coordinate(uv[at(vertex)], lines_[at(line)].axis) = place;
}

/// The vertices of a line in the order in which its edges join them; fewer where it is in pieces.
std::vector<int> StraightLines::chainOf(int line) const
{
    const Line& held = lines_[at(line)];
    std::vector<std::array<int, 2>> neighbours(at(vertexCount_), {-1, -1});
    const auto isOnLine = [&](int v) {
        return std::binary_search(held.vertices.begin(), held.vertices.end(), v);
    };
    for (const Segment& segment : segments_) {
        const auto [a, b] = segment.vertices;
        if (segment.axis != held.axis || !isOnLine(a) || !isOnLine(b))
            continue;
        neighbours[at(a)][neighbours[at(a)][0] < 0 ? 0 : 1] = b;
        neighbours[at(b)][neighbours[at(b)][0] < 0 ? 0 : 1] = a;
    }
    const auto end = std::find_if(held.vertices.begin(), held.vertices.end(),
                                  [&](int v) { return neighbours[at(v)][1] < 0; });
    std::vector<int> chain;
    for (int v = end == held.vertices.end() ? -1 : *end, last = -1; v >= 0;) {
        chain.push_back(v);
        const auto [first, second] = neighbours[at(v)];
        const int next = first == last ? second : first;
        last = v;
        v = next;
    }
    return chain;
}

std::vector<char> StraightLines::rollOut(const IslandMesh& mesh, std::vector<Vec2>& uv) const
{
    std::vector<char> isLaid(at(vertexCount_), 0);
    std::vector<Vec2> laid = uv;
    for (int l = 0; l < count(); ++l) {
        const Axis axis = lines_[at(l)].axis;
        const Axis along = axis == Axis::U ? Axis::V : Axis::U;
        const std::vector<int> chain = chainOf(l);
        if (chain.size() < lines_[at(l)].vertices.size())
            return {};
        std::vector<double> way(chain.size(), 0.0);
        double middle = 0.0;
        for (std::size_t i = 0; i < chain.size(); ++i) {
            if (i > 0)
                way[i] = way[i - 1] +
                         length(mesh.positions[at(chain[i])] - mesh.positions[at(chain[i - 1])]);
            middle += coordinate(uv[at(chain[i])], along) / static_cast<double>(chain.size());
        }
        const bool isBackward =
            coordinate(uv[at(chain.back())], along) < coordinate(uv[at(chain.front())], along);
        for (std::size_t i = 0; i < chain.size(); ++i) {
            const int v = chain[i];
            if (isLaid[at(v)])
                return {};
            isLaid[at(v)] = 1;
            const double fromMiddle = way[i] - 0.5 * way.back();
            coordinate(laid[at(v)], along) = middle + (isBackward ? -fromMiddle : fromMiddle);
            coordinate(laid[at(v)], axis) = mean(l, uv);
        }
    }
    uv = std::move(laid);
    return isLaid;
}

double StraightLines::energy(const NodeLayout& layout, double stiffness) const
{
    double sum = 0.0;
    for (int l = 0; l < count(); ++l) {
        const Line& line = lines_[at(l)];
        const double place = layout.at(nodeOf(l)).x;
        for (std::size_t i = 0; i < line.vertices.size(); ++i) {
            const double off = coordinate(layout.at(line.vertices[i]), line.axis) - place;
            sum += 0.5 * stiffness * line.weights[i] * off * off;
        }
    }
    return sum;
}

void StraightLines::addSprings(const NodeLayout& layout, double stiffness,
                               std::vector<Spring>& springs) const
{
    for (int l = 0; l < count(); ++l) {
        const Line& line = lines_[at(l)];
        const double place = layout.at(nodeOf(l)).x;
        for (std::size_t i = 0; i < line.vertices.size(); ++i) {
            const double off = coordinate(layout.at(line.vertices[i]), line.axis) - place;
            Spring spring;
            spring.count = 2;
            spring.nodes = {line.vertices[i], nodeOf(l)};
            coordinate(spring.directions[0], line.axis) = 1.0;
            spring.directions[1] = {-1.0, 0.0};
            spring.curvature = stiffness * line.weights[i];
            spring.slope = spring.curvature * off;
            springs.push_back(spring);
        }
    }
}

void StraightLines::addPairs(std::span<const Triangle> triangles,
                             std::vector<NodePair>& pairs) const
{
    const LineOfVertex lineOfAxis[] = {lineOfVertex(lines_, Axis::U, vertexCount_),
                                       lineOfVertex(lines_, Axis::V, vertexCount_)};
    const auto join = [&](int vertex, int other) {
        for (const LineOfVertex& lineOf : lineOfAxis) {
            const int line = vertex < vertexCount_ ? lineOf[at(vertex)] : -1;
            if (line < 0)
                continue;
            pairs.push_back({nodeOf(line), other});
            for (const LineOfVertex& otherLineOf : lineOfAxis)
                if (other < vertexCount_ && otherLineOf[at(other)] >= 0)
                    pairs.push_back({nodeOf(line), nodeOf(otherLineOf[at(other)])});
        }
    };
    for (std::size_t p = 0, end = pairs.size(); p < end; ++p) {
        const auto [a, b] = pairs[p];
        join(a, b);
        join(b, a);
    }
    for (const Triangle& corners : triangles)
        for (const int vertex : corners)
            for (const int other : corners)
                join(vertex, other);
}

} // namespace unfold3d

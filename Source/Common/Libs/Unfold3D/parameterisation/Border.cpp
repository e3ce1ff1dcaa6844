#include "Unfold3D/parameterisation/Border.h"

#include "Unfold3D/mesh/HalfEdges.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace unfold3d
{

namespace
{

constexpr double infinity = std::numeric_limits<double>::infinity();

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

} // namespace

Border::Border(const IslandMesh& mesh)
{
    traceLoops(mesh);
    measureWays(mesh);
    countCells(mesh);
}

void Border::traceLoops(const IslandMesh& mesh)
{
    const HalfEdges edges = pairHalfEdges(mesh.triangles, mesh.vertexCount());
    // The border goes on at the other side of the fan of triangles around the edge's end.
    const auto following = [&](int h) {
        int turning = nextHalfEdge(h);
        while (!edges.isBorder(turning))
            turning = nextHalfEdge(edges.twin[at(turning)]);
        return turning;
    };
    std::vector<char> isDone(edges.twin.size(), 0);
    for (int first = 0; first < static_cast<int>(edges.twin.size()); ++first) {
        if (!edges.isBorder(first) || isDone[at(first)])
            continue;
        const int begin = size();
        for (int h = first; !isDone[at(h)]; h = following(h)) {
            isDone[at(h)] = 1;
            vertexOf_.push_back(originOf(mesh.triangles, h));
            loopOf_.push_back(static_cast<int>(loopLength_.size()));
            next_.push_back(size());
            previous_.push_back(size() - 2);
        }
        loopLength_.push_back(0.0);
        next_.back() = begin;
        previous_[at(begin)] = size() - 1;
    }
}

void Border::measureWays(const IslandMesh& mesh)
{
    for (int p = 0; p < size(); ++p) {
        restLength_.push_back(
            length(mesh.positions[at(vertexOf(next(p)))] - mesh.positions[at(vertexOf(p))]));
        double& total = loopLength_[at(loopOf_[at(p)])];
        wayFromFirst_.push_back(total);
        total += restLength_.back();
    }

    pointsOfVertex_ = groupByKey(vertexOf_, mesh.vertexCount());
    wayToPinch_.assign(vertexOf_.size(), infinity);
    for (int p = 0; p < size(); ++p)
        if (pointsOfSameVertex(p).size() > 1)
            wayToPinch_[at(p)] = 0.0;
    // Twice round each loop in each direction reaches every point from every pinch.
    for (int round = 0; round < 2; ++round) {
        for (int p = 0; p < size(); ++p)
            wayToPinch_[at(next(p))] =
                std::min(wayToPinch_[at(next(p))], wayToPinch_[at(p)] + restLength(p));
        for (int p = size() - 1; p >= 0; --p)
            wayToPinch_[at(p)] =
                std::min(wayToPinch_[at(p)], wayToPinch_[at(next(p))] + restLength(p));
    }
}

void Border::countCells(const IslandMesh& mesh)
{
    int vertices = size();
    for (int v = 0; v < mesh.vertexCount(); ++v)
        vertices += pointsOfVertex_[v].empty();
    const int edges = (3 * mesh.triangleCount() + size()) / 2;
    eulerCharacteristic_ = vertices - edges + mesh.triangleCount();
}

double Border::way(int pointA, int pointB) const
{
    // Where the border touches itself, a way may change over to any other such place.
    const double overPinch = wayToPinch_[at(pointA)] + wayToPinch_[at(pointB)];
    if (loopOf_[at(pointA)] != loopOf_[at(pointB)])
        return overPinch;
    const double along = std::abs(wayFromFirst_[at(pointA)] - wayFromFirst_[at(pointB)]);
    return std::min({along, loopLength_[at(loopOf_[at(pointA)])] - along, overPinch});
}

double Border::wayToEdge(int point, int edge) const
{
    return std::min(way(point, edge), way(point, next(edge)));
}

bool Border::touches(int point, int edge) const
{
    const int vertex = vertexOf(point);
    return vertexOf(edge) == vertex || vertexOf(next(edge)) == vertex;
}

std::span<const int> Border::pointsOfSameVertex(int point) const
{
    return pointsOfVertex_[vertexOf(point)];
}

std::vector<Vec2> borderPositions(const Border& border, const NodeLayout& layout)
{
    std::vector<Vec2> positions(at(border.size()));
    for (int p = 0; p < border.size(); ++p)
        positions[at(p)] = layout.at(border.vertexOf(p));
    return positions;
}

} // namespace unfold3d

#include "UVUtils/projection/AxisPropagation.h"

#include "UVUtils/model/EdgeRuns.h"
#include "UVUtils/projection/TriplanarAxes.h"

#include <algorithm>
#include <functional>

namespace triplanar
{

namespace
{

/// [place] is it a corner of a triangle without an axis?
std::vector<char> openPlaces(std::span<const unsigned int> places,
                             std::span<const unsigned char> assigned)
{
    std::vector<char> isOpen(endOfIds(places));
    for (std::size_t t = 0; t < assigned.size(); ++t)
        if (assigned[t] == 0)
            for (const unsigned int place : places.subspan(3 * t, 3))
                isOpen[place] = 1;
    return isOpen;
}

/// Enters the triangles across the edges of triangles without an axis, and some others.
std::vector<Neighbors> neighborsOfOpenTriangles(std::span<const unsigned int> places,
                                                std::span<const unsigned char> assigned)
{
    const std::vector<char> isOpen = openPlaces(places, assigned);
    const auto visitOpenSides = [&](const auto& add) {
        visitSides(places, [&](const Edge& edge, unsigned int side) {
            if (isOpen[edge.first] != 0 && isOpen[edge.second] != 0)
                add(edge, side);
        });
    };
    std::vector<Neighbors> neighbors(assigned.size(), {noTriangle, noTriangle, noTriangle});
    const auto join = [&](unsigned int side, unsigned int otherSide) {
        neighbors[side / 3][side % 3] = static_cast<int>(otherSide / 3);
    };
    forEachEdge(isOpen.size(), visitOpenSides, [&](const Edge&, std::span<const EdgePlace> sides) {
        if (sides.size() != 2 || sides[0].place / 3 == sides[1].place / 3)
            return;
        join(sides[0].place, sides[1].place);
        join(sides[1].place, sides[0].place);
    });
    return neighbors;
}

Front frontOf(std::span<const Neighbors> neighbors, std::span<const unsigned char> assigned)
{
    Front front;
    for (std::size_t t = 0; t < assigned.size(); ++t) {
        const auto isOpen = [&](int neighbor) {
            return neighbor != noTriangle && assigned[static_cast<std::size_t>(neighbor)] == 0;
        };
        if (assigned[t] != 0 && std::any_of(neighbors[t].begin(), neighbors[t].end(), isOpen))
            front[static_cast<std::size_t>(lowestAxis(assigned[t]))].push_back(static_cast<int>(t));
    }
    return front;
}

/// First in, first out; each triangle enters once at most.
class TriangleQueue
{
public:
    explicit TriangleQueue(std::size_t triangleCount) { triangles_.reserve(triangleCount); }

    bool empty() const { return first_ == triangles_.size(); }
    void push(int triangle) { triangles_.push_back(triangle); }
    int pop() { return triangles_[first_++]; }

private:
    std::vector<int> triangles_;
    std::size_t first_ = 0;
};

TriangleQueue queueOf(const Front& front, std::size_t triangleCount)
{
    TriangleQueue queue(triangleCount);
    for (const std::size_t axis : {0U, 3U, 1U, 4U, 2U, 5U})
        for (const int triangle : front[axis])
            queue.push(triangle);
    return queue;
}

void propagateToAmbiguousNeighbors(TriangleQueue& queue, std::span<const Neighbors> neighbors,
                                   std::span<const unsigned char> candidates,
                                   std::span<unsigned char> assigned)
{
    while (!queue.empty()) {
        const auto t = static_cast<std::size_t>(queue.pop());
        for (const int neighbor : neighbors[t]) {
            if (neighbor == noTriangle)
                continue;
            const auto x = static_cast<std::size_t>(neighbor);
            if (assigned[x] != 0 || (candidates[x] & assigned[t]) == 0)
                continue;
            assigned[x] = assigned[t];
            queue.push(neighbor);
        }
    }
}

/// predicate  is it the turn of triangles with so many candidates?
void chooseAxisAndPropagateToAmbiguousNeighbors(TriangleQueue& queue, std::size_t triangleCount,
                                                std::span<const Neighbors> neighbors,
                                                std::span<const unsigned char> candidates,
                                                std::span<unsigned char> assigned,
                                                const std::function<bool(int)>& predicate)
{
    for (std::size_t i = 0; i < triangleCount; ++i) {
        if (assigned[i] != 0 || !predicate(countAxes(candidates[i])))
            continue;
        bool hasOpenNeighbor = false;
        unsigned char axisOfLast = 0;
        for (const int neighbor : neighbors[i]) {
            if (neighbor == noTriangle)
                continue;
            axisOfLast = assigned[static_cast<std::size_t>(neighbor)];
            hasOpenNeighbor |= axisOfLast == 0;
        }
        if (!hasOpenNeighbor && axisOfLast != 0) {
            assigned[i] = axisOfLast;
            continue;
        }
        assigned[i] = maskOf(lowestAxis(candidates[i]));
        if (hasOpenNeighbor) {
            queue.push(static_cast<int>(i));
            propagateToAmbiguousNeighbors(queue, neighbors, candidates, assigned);
        }
    }
}

} // namespace

bool buildNeighborsList(std::span<const unsigned int> places,
                        std::span<const unsigned char> assigned, std::vector<Neighbors>& neighbors,
                        Front& front)
{
    if (places.empty() || places.size() != 3 * assigned.size())
        return false;
    neighbors = neighborsOfOpenTriangles(places, assigned);
    front = frontOf(neighbors, assigned);
    return true;
}

void propagateAxes(std::span<const unsigned int> places, std::span<const unsigned char> candidates,
                   std::span<unsigned char> assigned)
{
    std::vector<Neighbors> neighbors;
    Front front;
    if (!buildNeighborsList(places, assigned, neighbors, front))
        return;
    TriangleQueue queue = queueOf(front, assigned.size());
    propagateToAmbiguousNeighbors(queue, neighbors, candidates, assigned);
    const auto chooseAmong = [&](const std::function<bool(int)>& predicate) {
        chooseAxisAndPropagateToAmbiguousNeighbors(queue, assigned.size(), neighbors, candidates,
                                                   assigned, predicate);
    };
    chooseAmong([](int count) { return count == 2; });
    chooseAmong([](int count) { return count >= 3; });
}

} // namespace triplanar

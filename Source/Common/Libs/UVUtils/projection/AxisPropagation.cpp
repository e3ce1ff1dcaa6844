#include "UVUtils/projection/AxisPropagation.h"

#include "UVUtils/model/EdgeNumbers.h"
#include "UVUtils/projection/TriplanarAxes.h"

#include <algorithm>

namespace triplanar
{

namespace
{

/// Sides of triangles, numbered 3 * triangle + edge, and where they run.
struct Sides
{
    std::vector<unsigned int> numbers;
    std::vector<Edge> edges;
};

/// [place] is it a corner of a triangle without an axis?
std::vector<char> openPlaces(std::span<const unsigned int> places,
                             std::span<const unsigned char> assigned)
{
    const unsigned int highest = *std::max_element(places.begin(), places.end());
    std::vector<char> isOpen(std::size_t{highest} + 1);
    for (std::size_t t = 0; t < assigned.size(); ++t)
        if (assigned[t] == 0)
            for (const unsigned int place : places.subspan(3 * t, 3))
                isOpen[place] = 1;
    return isOpen;
}

/// All sides along the edges of triangles without an axis, and some others.
Sides sidesAtOpenTriangles(std::span<const unsigned int> places,
                           std::span<const unsigned char> assigned)
{
    const std::vector<char> isOpen = openPlaces(places, assigned);
    Sides sides;
    for (unsigned int first = 0; first < places.size(); first += 3)
        for (unsigned int k = 0; k < 3; ++k) {
            const Edge edge(places[first + k], places[first + (k + 1) % 3]);
            if (isOpen[edge.first] == 0 || isOpen[edge.second] == 0)
                continue;
            sides.numbers.push_back(first + k);
            sides.edges.push_back(edge);
        }
    return sides;
}

/// The triangles at an edge: with two of them, either gives the other.
struct EdgeUse
{
    unsigned int count = 0;
    unsigned int triangles = 0; ///< the numbers of all, by exclusive or
};

std::vector<EdgeUse> usesOfEdges(const Sides& sides, const EdgeNumbers& numbers)
{
    std::vector<EdgeUse> uses(numbers.count);
    for (std::size_t i = 0; i < sides.numbers.size(); ++i) {
        EdgeUse& use = uses[numbers.numberOf[i]];
        ++use.count;
        use.triangles ^= sides.numbers[i] / 3;
    }
    return uses;
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

/// accepts  is it the turn of triangles with so many candidates?
template <class Predicate>
void chooseAxisAndPropagateToAmbiguousNeighbors(TriangleQueue& queue, std::size_t triangleCount,
                                                std::span<const Neighbors> neighbors,
                                                std::span<const unsigned char> candidates,
                                                std::span<unsigned char> assigned,
                                                const Predicate& accepts)
{
    for (std::size_t i = 0; i < triangleCount; ++i) {
        if (assigned[i] != 0 || !accepts(countAxes(candidates[i])))
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
    const Sides sides = sidesAtOpenTriangles(places, assigned);
    const EdgeNumbers numbers = numberEdges(sides.edges);
    const std::vector<EdgeUse> uses = usesOfEdges(sides, numbers);
    neighbors.assign(assigned.size(), {noTriangle, noTriangle, noTriangle});
    for (std::size_t i = 0; i < sides.numbers.size(); ++i) {
        const unsigned int t = sides.numbers[i] / 3;
        const EdgeUse& use = uses[numbers.numberOf[i]];
        const unsigned int other = use.triangles ^ t;
        if (use.count != 2 || other == t)
            continue;
        neighbors[t][sides.numbers[i] % 3] = static_cast<int>(other);
        if (assigned[t] == 0 || assigned[other] != 0)
            continue;
        std::vector<int>& triangles = front[static_cast<std::size_t>(lowestAxis(assigned[t]))];
        if (triangles.empty() || triangles.back() != static_cast<int>(t))
            triangles.push_back(static_cast<int>(t));
    }
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
    const auto chooseAmong = [&](const auto& accepts) {
        chooseAxisAndPropagateToAmbiguousNeighbors(queue, assigned.size(), neighbors, candidates,
                                                   assigned, accepts);
    };
    chooseAmong([](int count) { return count == 2; });
    chooseAmong([](int count) { return count >= 3; });
}

} // namespace triplanar

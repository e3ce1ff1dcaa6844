#include "Unfold3D/seams/SleeveLine.h"

#include <utility>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

} // namespace

SleeveLine::SleeveLine(const SeamMesh& mesh, const VertexSet& sleeve)
    : mesh_(mesh), sleeve_(sleeve), placeInLine_(sleeve.vertices.size(), -1)
{}

void SleeveLine::lay(std::vector<int> line)
{
    for (const int number : line_)
        placeInLine_[at(number)] = -1;
    line_ = std::move(line);
    for (std::size_t i = 0; i < line_.size(); ++i)
        placeInLine_[at(line_[i])] = static_cast<int>(i);
}

int SleeveLine::crossing(int from, int edge, int to) const
{
    const bool isFromOn = placeInLine_[at(from)] >= 0;
    const bool isToOn = placeInLine_[at(to)] >= 0;
    if (isFromOn == isToOn)
        return 0;
    if (isFromOn)
        return isLeft(from, edge) ? 1 : 0;
    return isLeft(to, edge) ? -1 : 0;
}

/// Whether an edge at a vertex of the line goes off to its left: between the next vertex of the
/// line and the one before, counter-clockwise.
bool SleeveLine::isLeft(int number, int edge) const
{
    const int i = placeInLine_[at(number)];
    const int last = static_cast<int>(line_.size()) - 1;
    const int next = i < last ? sleeve_.vertices[at(line_[at(i + 1)])] : -1;
    const int previous = i > 0 ? sleeve_.vertices[at(line_[at(i - 1)])] : -1;
    const int v = sleeve_.vertices[at(number)];
    // Counter-clockwise from the edge: on the left the vertex before comes first, on the right the
    // next one; clockwise it is the other way round, which tells where the surface ends. Beyond
    // either end of the line the sleeve ends.
    for (const bool counterClockwise : {true, false}) {
        const Met met = firstMet(v, edge, next, previous, counterClockwise);
        if (met != Met::Nothing)
            return (met == Met::Previous) == counterClockwise;
    }
    return false;
}

SleeveLine::Met SleeveLine::firstMet(int vertex, int edge, int next, int previous,
                                     bool counterClockwise) const
{
    const auto [h, g] = mesh_.halvesOf(edge);
    const int start = mesh_.originOf(h) == vertex ? h : g;
    int out = start;
    for (;;) {
        if (counterClockwise) {
            const int before = previousHalfEdge(out);
            out = mesh_.twin[at(before)];
            // The last edge of a fan has no half that leaves the vertex.
            if (out < 0)
                return meets(mesh_.originOf(before), next, previous);
        } else {
            const int twin = mesh_.twin[at(out)];
            if (twin < 0)
                return Met::Nothing;
            out = nextHalfEdge(twin);
        }
        if (out == start)
            return Met::Nothing;
        const Met met = meets(mesh_.targetOf(out), next, previous);
        if (met != Met::Nothing)
            return met;
    }
}

SleeveLine::Met SleeveLine::meets(int vertex, int next, int previous) const
{
    const bool isOutside = sleeve_.numberOf(vertex) < 0;
    if (vertex == next || (next < 0 && isOutside))
        return Met::Next;
    if (vertex == previous || (previous < 0 && isOutside))
        return Met::Previous;
    return Met::Nothing;
}

} // namespace unfold3d

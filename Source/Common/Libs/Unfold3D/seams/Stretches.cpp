#include "Unfold3D/seams/Stretches.h"

#include "Unfold3D/seams/AngleDefects.h"
#include "Unfold3D/seams/CheapestPaths.h"
#include "Unfold3D/seams/Patches.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// What a stretch along an edge of this angle (radians) or more counts, by what a smooth one does.
constexpr double sharpAngle = 1.0;
constexpr double weightOfSharp = 0.5;

constexpr int noRun = -2;
constexpr int endOfRun = -1;

double lengthAlong(const SeamMesh& mesh, int edge)
{
    const double sharpness = std::min(std::abs(mesh.angles[at(edge)]) / sharpAngle, 1.0);
    return mesh.lengths[at(edge)] * (1.0 + (weightOfSharp - 1.0) * sharpness);
}

} // namespace

StretchFinder::StretchFinder(const SeamMesh& mesh, std::span<const char> isSeam,
                             std::span<const int> pieceOf)
    : mesh_(mesh), isSeam_(isSeam), pieceOf_(pieceOf), defects_(angleDefects(mesh)),
      next_(mesh.twin.size(), noRun)
{}

Stretch StretchFinder::longest(int pieceA, int pieceB, std::span<const int> edges,
                               const DefectLimits& limits)
{
    std::vector<int> halves;
    halves.reserve(edges.size());
    for (const int edge : edges) {
        const auto [h, g] = mesh_.halvesOf(edge);
        halves.push_back(pieceOf_[at(h / 3)] == pieceA ? h : g);
    }
    link(halves, pieceB, limits.atVertex);
    std::vector<int> followers;
    for (const int h : halves)
        if (next_[at(h)] >= 0)
            followers.push_back(next_[at(h)]);
    std::sort(followers.begin(), followers.end());
    std::vector<int> starts;
    for (const int h : halves)
        if (!std::binary_search(followers.begin(), followers.end(), h))
            starts.push_back(h);
    starts.insert(starts.end(), halves.begin(), halves.end()); // what is left then is closed

    Stretch best;
    for (const int start : starts)
        for (int h = start; h >= 0 && next_[at(h)] != noRun;) {
            Stretch stretch = follow(h, limits.inAll);
            h = stretch.nextHalf;
            if (best.edges.empty() || toPathCost(stretch.length) > toPathCost(best.length))
                best = std::move(stretch);
        }
    std::sort(best.edges.begin(), best.edges.end());
    return best;
}

void StretchFinder::link(std::span<const int> halves, int other, double mostDefect)
{
    for (const int h : halves)
        next_[at(h)] = endOfRun;
    for (const int h : halves)
        next_[at(h)] = nextInRun(h, other, mostDefect);
}

/// Takes as much of a run out, from its first half-edge on, as there may be in one stretch.
Stretch StretchFinder::follow(int first, double mostInAll)
{
    Stretch stretch;
    double defect = 0.0;
    for (int h = first; h >= 0 && next_[at(h)] != noRun && std::abs(defect) <= mostInAll;) {
        const int edge = mesh_.edgeOf[at(h)];
        stretch.edges.push_back(edge);
        stretch.length += lengthAlong(mesh_, edge);
        defect += defects_[at(mesh_.targetOf(h))];
        h = stretch.nextHalf = std::exchange(next_[at(h)], noRun);
    }
    return stretch;
}

int StretchFinder::nextInRun(int h, int other, double mostDefect) const
{
    if (std::abs(defects_[at(mesh_.targetOf(h))]) > mostDefect)
        return endOfRun;
    const int next = nextOnBorder(mesh_, isSeam_, h);
    const int twin = mesh_.twin[at(next)];
    if (next_[at(next)] == noRun || pieceOf_[at(twin / 3)] != other)
        return endOfRun;
    return nextOnBorder(mesh_, isSeam_, twin) == mesh_.twin[at(h)] ? next : endOfRun;
}

} // namespace unfold3d

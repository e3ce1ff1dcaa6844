#include "Unfold3D/seams/OpenPatches.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <utility>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// By how much, in radians, a loop may turn otherwise than a hole in a flat plate and still count
/// as one: about the curvature that a layout takes up with next to no distortion.
constexpr double flatHoleTolerance = 0.25;

/// Of the arcs that open a part those are cut at once that cost at most this many times the
/// cheapest.
constexpr PathCost batchShare = 2;

double lengthOf(const SeamMesh& mesh, const BorderLoop& loop)
{
    double sum = 0.0;
    for (const int h : loop)
        sum += length(mesh.positions[at(mesh.targetOf(h))] - mesh.positions[at(mesh.originOf(h))]);
    return sum;
}

} // namespace

PatchOpener::PatchOpener(const SeamMesh& mesh, std::span<const PathCost> costs,
                         std::vector<char>& isSeam, const RunControl& control)
    : mesh_(mesh), costs_(costs), isSeam_(isSeam), control_(control), paths_(mesh, costs, isSeam),
      loops_(mesh, isSeam), parent_(mesh.triangles.size()), isMarked_(mesh.triangles.size(), 0)
{
    std::iota(parent_.begin(), parent_.end(), 0);
}

int PatchOpener::setOf(int triangle)
{
    while (parent_[at(triangle)] != triangle)
        triangle = parent_[at(triangle)] = parent_[at(parent_[at(triangle)])];
    return triangle;
}

bool PatchOpener::joinSets(int triangleA, int triangleB)
{
    const int a = setOf(triangleA);
    const int b = setOf(triangleB);
    parent_[at(std::max(a, b))] = std::min(a, b);
    return a != b;
}

void PatchOpener::cut(int edge)
{
    if (isSeam_[at(edge)])
        return;
    isSeam_[at(edge)] = 1;
    cuts_.push_back(edge);
}

std::vector<int> PatchOpener::open(std::span<const int> patch)
{
    cuts_.clear();
    std::vector<std::vector<int>> parts = partsOf(patch);
    // Cuts may part a part where several meet at one hole, so a part that was cut comes back as
    // what has become of it.
    while (!parts.empty()) {
        const std::vector<int> part = std::move(parts.back());
        parts.pop_back();
        if (openFurther(part))
            for (std::vector<int>& piece : partsOf(part))
                parts.push_back(std::move(piece));
    }
    return std::move(cuts_);
}

std::vector<std::vector<int>> PatchOpener::partsOf(std::span<const int> patch)
{
    std::vector<std::vector<int>> parts;
    for (const int t : patch)
        isMarked_[at(t)] = 1;
    for (const int first : patch) {
        if (!isMarked_[at(first)])
            continue;
        std::vector<int>& part = parts.emplace_back(1, first);
        isMarked_[at(first)] = 0;
        for (std::size_t next = 0; next < part.size(); ++next)
            for (int h = 3 * part[next]; h < 3 * part[next] + 3; ++h) {
                if (endsPatch(mesh_, isSeam_, h))
                    continue;
                const int neighbour = mesh_.twin[at(h)] / 3;
                if (isMarked_[at(neighbour)]) {
                    isMarked_[at(neighbour)] = 0;
                    part.push_back(neighbour);
                }
            }
        std::sort(part.begin(), part.end());
    }
    return parts;
}

/// Cuts what lies nearest at hand. False when the part is open already.
bool PatchOpener::openFurther(std::span<const int> part)
{
    control_.checkpoint();
    paths_.refreshEnds(part);
    const int characteristic = characteristicOf(part);
    if (characteristic == 1)
        return false;
    const Borders borders = bordersOf(part);
    if (borders.rims.empty()) {
        if (characteristic == 2)
            slit(part);
        else
            cutHandleOfClosed(part);
        return true;
    }
    if (characteristic + static_cast<int>(borders.holes.size()) == 1)
        return false;
    if (cutArcs(part, borders))
        return true;
    // Holes that touch one another leave no room between them: then they have to be joined.
    Borders all = borders;
    all.rims.insert(all.rims.end(), all.holes.begin(), all.holes.end());
    all.holes.clear();
    return cutArcs(part, all);
}

int PatchOpener::characteristicOf(std::span<const int> part) const
{
    // As in eulerCharacteristics. An inner vertex is counted in shares of its triangles' corners.
    int border = 0;
    std::vector<int> inner;
    for (const int t : part)
        for (int h = 3 * t; h < 3 * t + 3; ++h) {
            if (endsPatch(mesh_, isSeam_, h))
                ++border;
            if (!paths_.isEnd(mesh_.originOf(h)))
                inner.push_back(mesh_.originOf(h));
        }
    std::sort(inner.begin(), inner.end());
    const auto count = std::unique(inner.begin(), inner.end()) - inner.begin();
    return static_cast<int>(count) + (border - static_cast<int>(part.size())) / 2;
}

PatchOpener::Borders PatchOpener::bordersOf(std::span<const int> part)
{
    Borders borders;
    for (BorderLoop& loop : loops_.loopsOf(part)) {
        const double turning = turningOf(mesh_, isSeam_, loop);
        const bool isHole =
            keepsFlatHoles_ && std::abs(turning + 2.0 * std::numbers::pi) < flatHoleTolerance;
        (isHole ? borders.holes : borders.rims).push_back(std::move(loop));
    }
    if (borders.rims.empty() && !borders.holes.empty()) {
        const auto longest = std::max_element(borders.holes.begin(), borders.holes.end(),
                                              [&](const BorderLoop& a, const BorderLoop& b) {
                                                  return toPathCost(lengthOf(mesh_, a)) <
                                                         toPathCost(lengthOf(mesh_, b));
                                              });
        borders.rims.push_back(std::move(*longest));
        borders.holes.erase(longest);
    }
    return borders;
}

/// A closed part without handles: cuts from one of its ends to the other.
void PatchOpener::slit(std::span<const int> part)
{
    int end = mesh_.triangles[at(part.front())][0];
    for (int sweep = 0; sweep < 3; ++sweep) {
        const int from[] = {end};
        paths_.search(from, control_);
        end = paths_.reached().back();
    }
    const std::vector<int> path = paths_.pathTo(end);
    for (const int edge : path)
        cut(edge);
    // One edge alone parts nothing.
    if (path.size() == 1)
        for (const Spoke& spoke : mesh_.spokes[end])
            if (!isSeam_[at(spoke.edge)]) {
                cut(spoke.edge);
                break;
            }
}

PathCost PatchOpener::loopCost(int edge) const
{
    const auto [a, b] = mesh_.verticesOf(edge);
    if (paths_.costTo(a) == unreached || paths_.costTo(b) == unreached)
        return unreached;
    return paths_.costTo(a) + costs_[at(edge)] + paths_.costTo(b);
}

/// The edges of a part that neither the tree of cheapest paths nor the tree over the triangles
/// runs over or crosses, the cheapest loop first. The triangles around a hole count as joined.
std::vector<int> PatchOpener::edgesBesideTrees(std::span<const int> part,
                                               const std::vector<BorderLoop>& holes)
{
    for (const BorderLoop& hole : holes)
        for (const int h : hole)
            joinSets(hole.front() / 3, h / 3);

    std::vector<std::pair<PathCost, int>> crossings;
    for (const int t : part)
        for (int h = 3 * t; h < 3 * t + 3; ++h) {
            if (endsPatch(mesh_, isSeam_, h) || mesh_.twin[at(h)] < h)
                continue;
            const int edge = mesh_.edgeOf[at(h)];
            if (paths_.edgeTo(mesh_.originOf(h)) == edge ||
                paths_.edgeTo(mesh_.targetOf(h)) == edge)
                continue;
            crossings.emplace_back(-loopCost(edge), edge);
        }
    control_.checkpoint();
    std::sort(crossings.begin(), crossings.end()); // the dearest first
    control_.checkpoint();
    std::vector<int> beside;
    for (const auto& [minusCost, edge] : crossings) {
        const auto [left, right] = mesh_.trianglesOf(edge);
        if (!joinSets(left, right))
            beside.push_back(edge);
    }
    for (const int t : part)
        parent_[at(t)] = t;
    std::reverse(beside.begin(), beside.end());
    return beside;
}

/// Cuts an edge and the ways from both its ends, as far as these don't run together.
void PatchOpener::cutLoop(int edge)
{
    const auto [a, b] = mesh_.verticesOf(edge);
    std::vector<int> wayA = paths_.pathTo(a);
    std::vector<int> wayB = paths_.pathTo(b);
    while (!wayA.empty() && !wayB.empty() && wayA.back() == wayB.back()) {
        wayA.pop_back();
        wayB.pop_back();
    }
    cut(edge);
    for (const std::vector<int>& way : {wayA, wayB})
        for (const int e : way)
            cut(e);
}

/// A closed part with handles: cuts one, around the cheapest of its loops that a few roots show.
void PatchOpener::cutHandleOfClosed(std::span<const int> part)
{
    int root = mesh_.triangles[at(part.front())][0];
    PathCost best = unreached;
    constexpr int maxRoots = 6;
    for (int tried = 0; tried < maxRoots; ++tried) {
        const int from[] = {root};
        paths_.search(from, control_);
        const std::vector<int> loops = edgesBesideTrees(part, {});
        const PathCost cost = loopCost(loops.front());
        if (cost >= best || tried + 1 == maxRoots) {
            cutLoop(loops.front());
            return;
        }
        best = cost;
        root = mesh_.verticesOf(loops.front())[0];
    }
}

/// Cuts the cheapest arcs from rim to rim, or from one place of a rim around a handle to another.
/// False when there are none.
bool PatchOpener::cutArcs(std::span<const int> part, const Borders& borders)
{
    std::vector<int> sources;
    for (const BorderLoop& rim : borders.rims)
        for (const int h : rim)
            sources.push_back(mesh_.originOf(h));
    std::sort(sources.begin(), sources.end());
    for (const int t : part)
        isMarked_[at(t)] = 1;
    paths_.stayIn(isMarked_);
    paths_.search(sources, control_);
    paths_.stayIn({});
    for (const int t : part)
        isMarked_[at(t)] = 0;
    const std::vector<int> arcs = edgesBesideTrees(part, borders.holes);
    if (arcs.empty() || loopCost(arcs.front()) == unreached)
        return false;
    const PathCost limit = batchShare * loopCost(arcs.front());
    for (const int edge : arcs)
        if (loopCost(edge) <= limit)
            cutLoop(edge);
    return true;
}

void openPatches(const SeamMesh& mesh, std::span<const PathCost> costs, std::vector<char>& isSeam,
                 const RunControl& control)
{
    PatchOpener opener(mesh, costs, isSeam, control);
    const Patches patches = findPatches(mesh, isSeam);
    for (int patch = 0; patch < patches.count(); ++patch)
        opener.open(patches.triangles[patch]);
}

} // namespace unfold3d

#include "Unfold3D/start/GridDrawing.h"

#include "Unfold3D/mesh/HalfEdges.h"

#include <array>
#include <cstdint>
#include <utility>

// W. Schnyder, "Embedding planar graphs on the grid" (1990). The disk is closed to a sphere by one
// more vertex beyond its outline, and one triangle there becomes the outer face. Its corners are
// the roots of three trees that share out all inner edges. From each vertex three paths, one in
// each tree, cut the drawing into three regions; the numbers of triangles in the regions are its
// barycentric coordinates.
//
// The trees come from taking vertices off the outer cycle one after the other, always one without a
// chord (the canonical order of de Fraysseix, Pach and Pollack, backwards): a vertex goes with its
// cycle neighbours as parents in two of the trees, and becomes the parent in the third of the
// vertices that it uncovers.

namespace unfold3d
{

namespace
{

constexpr int none = -1;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

enum Tree : std::size_t
{
    ToLeft,
    ToRight,
    ToTop
};

struct SchnyderTrees
{
    std::array<int, 3> roots{};                ///< [tree]
    std::array<std::vector<int>, 3> parents{}; ///< [tree][vertex], none for the three roots
    std::vector<int> removal; ///< inner vertices in the order in which they were taken off
};

class Shelling
{
public:
    /// The first triangle of the sphere is the outer face.
    Shelling(const std::vector<Triangle>& sphere, int vertexCount)
        : sphere_(sphere), edges_(pairHalfEdges(sphere, vertexCount)),
          leaving_(at(vertexCount), none), nextOnCycle_(leaving_.size(), none),
          previousOnCycle_(leaving_.size(), none), cycleNeighbours_(leaving_.size(), 0)
    {
        for (int h = 0; h < static_cast<int>(3 * sphere.size()); ++h)
            leaving_[at(originOf(sphere, h))] = h;
    }

    SchnyderTrees run()
    {
        // Seen by the others, the corners of the outer face run the other way round.
        const auto& [left, top, right] = sphere_.front();
        trees_.roots = {left, right, top};
        for (std::vector<int>& tree : trees_.parents)
            tree.assign(leaving_.size(), none);
        link(left, right);
        link(right, top);
        link(top, left);
        for (const int root : trees_.roots)
            comeOntoCycle(root);

        takeOff(top);
        for (std::size_t next = 0; next < candidates_.size(); ++next)
            if (isRemovable(candidates_[next])) {
                trees_.removal.push_back(candidates_[next]);
                takeOff(candidates_[next]);
            }
        for (const int root : trees_.roots)
            for (std::vector<int>& tree : trees_.parents)
                tree[at(root)] = none;
        return std::move(trees_);
    }

private:
    bool isOnCycle(int v) const { return nextOnCycle_[at(v)] != none; }
    /// A vertex of the cycle whose only neighbours there are those beside it has no chord.
    bool isRemovable(int v) const
    {
        return isOnCycle(v) && cycleNeighbours_[at(v)] == 2 && v != trees_.roots[ToLeft] &&
               v != trees_.roots[ToRight];
    }
    void link(int v, int next)
    {
        nextOnCycle_[at(v)] = next;
        previousOnCycle_[at(next)] = v;
    }
    /// From a half-edge on to the next that begins at the same vertex, clockwise.
    int turn(int h) const { return nextHalfEdge(edges_.twin[at(h)]); }

    template <class Visit>
    void forEachNeighbour(int v, const Visit& visit) const
    {
        const int first = leaving_[at(v)];
        int h = first;
        do {
            visit(targetOf(sphere_, h));
            h = turn(h);
        } while (h != first);
    }
    std::vector<int> neighboursBetween(int v, int from, int to) const
    {
        int h = leaving_[at(v)];
        while (targetOf(sphere_, h) != from)
            h = turn(h);
        std::vector<int> between;
        for (h = turn(h); targetOf(sphere_, h) != to; h = turn(h))
            between.push_back(targetOf(sphere_, h));
        return between;
    }

    void comeOntoCycle(int v)
    {
        forEachNeighbour(v, [&](int w) { ++cycleNeighbours_[at(w)]; });
        candidates_.push_back(v);
    }

    void takeOff(int v)
    {
        // The cycle runs counter-clockwise around what is left. From left over right it climbs to
        // the top and comes down again, so what follows v lies on its left.
        const int before = previousOnCycle_[at(v)];
        const int after = nextOnCycle_[at(v)];
        const std::vector<int> uncovered = neighboursBetween(v, before, after);
        trees_.parents[ToLeft][at(v)] = after;
        trees_.parents[ToRight][at(v)] = before;
        nextOnCycle_[at(v)] = none;
        int last = before;
        for (const int u : uncovered) {
            trees_.parents[ToTop][at(u)] = v;
            link(last, u);
            last = u;
        }
        link(last, after);

        for (const int u : uncovered)
            comeOntoCycle(u);
        forEachNeighbour(v, [&](int w) {
            if (--cycleNeighbours_[at(w)] == 2)
                candidates_.push_back(w);
        });
    }

    const std::vector<Triangle>& sphere_;
    HalfEdges edges_;
    std::vector<int> leaving_;         ///< [vertex] some half-edge that begins there
    std::vector<int> nextOnCycle_;     ///< [vertex] none beside the cycle
    std::vector<int> previousOnCycle_; ///< [vertex] stale beside the cycle
    std::vector<int> cycleNeighbours_; ///< [vertex] how many of its neighbours are on the cycle
    std::vector<int> candidates_;      ///< queue of vertices that may have become removable
    SchnyderTrees trees_;
};

/// How many vertices hang on each in a tree, itself included.
std::vector<std::int64_t> subtreeSizes(const SchnyderTrees& trees, Tree tree)
{
    std::vector<std::int64_t> sizes(trees.parents[tree].size(), 1);
    const auto addToParent = [&](int v) { sizes[at(trees.parents[tree][at(v)])] += sizes[at(v)]; };
    // To the top, parents are taken off before their children; to the sides, after them.
    if (tree == ToTop)
        for (std::size_t i = trees.removal.size(); i-- > 0;)
            addToParent(trees.removal[i]);
    else
        for (const int v : trees.removal)
            addToParent(v);
    return sizes;
}

/// Sum of `values` over the path from each vertex to the root of a tree, both included.
std::vector<std::int64_t> pathSums(const SchnyderTrees& trees, Tree tree,
                                   std::vector<std::int64_t> values)
{
    const auto addParent = [&](int v) { values[at(v)] += values[at(trees.parents[tree][at(v)])]; };
    if (tree == ToTop)
        for (const int v : trees.removal)
            addParent(v);
    else
        for (std::size_t i = trees.removal.size(); i-- > 0;)
            addParent(trees.removal[i]);
    return values;
}

/// Number of triangles in the region between the paths of each vertex to `sideA` and `sideB`, the
/// region that lies off the root of `tree`.
std::vector<double> regionSizes(const SchnyderTrees& trees, Tree tree, Tree sideA, Tree sideB)
{
    const std::vector<std::int64_t> sizes = subtreeSizes(trees, tree);
    const std::vector<std::int64_t> alongA = pathSums(trees, sideA, sizes);
    const std::vector<std::int64_t> alongB = pathSums(trees, sideB, sizes);
    const std::vector<std::int64_t> ones(sizes.size(), 1);
    const std::vector<std::int64_t> lengthA = pathSums(trees, sideA, ones);
    const std::vector<std::int64_t> lengthB = pathSums(trees, sideB, ones);

    std::vector<double> regions(sizes.size(), 0.0);
    for (const int v : trees.removal) {
        // A triangulated polygon with b of its V vertices on the outline has 2 V - b - 2 triangles.
        const std::int64_t vertices = alongA[at(v)] + alongB[at(v)] - sizes[at(v)];
        const std::int64_t onOutline = lengthA[at(v)] + lengthB[at(v)] - 1;
        regions[at(v)] = static_cast<double>(2 * vertices - onOutline - 2);
    }
    regions[at(trees.roots[tree])] = static_cast<double>(2 * sizes.size() - 5);
    return regions;
}

std::vector<Triangle> closeToSphere(const FilledDisk& disk)
{
    std::vector<Triangle> sphere;
    sphere.reserve(disk.triangles.size() + disk.outline.size());
    for (std::size_t i = 0; i < disk.outline.size(); ++i)
        sphere.push_back(
            {disk.outline[(i + 1) % disk.outline.size()], disk.outline[i], disk.vertexCount});
    sphere.insert(sphere.end(), disk.triangles.begin(), disk.triangles.end());
    return sphere;
}

} // namespace

std::vector<Vec2> drawOnGrid(const FilledDisk& disk)
{
    const std::vector<Triangle> sphere = closeToSphere(disk);
    const SchnyderTrees trees = Shelling(sphere, disk.vertexCount + 1).run();
    const std::vector<double> x = regionSizes(trees, ToRight, ToLeft, ToTop);
    const std::vector<double> y = regionSizes(trees, ToTop, ToLeft, ToRight);
    std::vector<Vec2> drawing(at(disk.vertexCount));
    for (std::size_t v = 0; v < drawing.size(); ++v)
        drawing[v] = {x[v], y[v]};
    return drawing;
}

} // namespace unfold3d

#include "Unfold3D/linear/Supernodes.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Entries of the lower triangle of `columns` columns whose first has `height` rows.
std::int64_t trapezoid(std::int64_t columns, std::int64_t height)
{
    return columns * height - columns * (columns - 1) / 2;
}

/// Whether a joined block is worth its zeros. The steps were found by trial on meshes: narrow
/// blocks cost more by the bookkeeping of a front than by multiplying zeros.
bool isWorthJoining(std::int64_t columns, std::int64_t zeros, std::int64_t entries)
{
    struct Step
    {
        std::int64_t columns;
        double zeroShare;
    };
    constexpr Step steps[] = {{4, 1.0}, {12, 0.5}, {24, 0.15}};
    constexpr double zeroShareOfWide = 0.05;
    const double share = static_cast<double>(zeros) / static_cast<double>(entries);
    for (const Step& step : steps)
        if (columns <= step.columns)
            return share <= step.zeroShare;
    return share <= zeroShareOfWide;
}

/// Runs of columns in which each has the rows of the one before, less that one.
struct Runs
{
    std::vector<int> first; ///< [run + 1]
    std::vector<int> parent;
};

Runs runsOfEqualColumns(const EliminationTree& tree)
{
    const int n = static_cast<int>(tree.parent.size());
    Runs runs;
    std::vector<int> runOfColumn(at(n));
    for (int j = 0; j < n; ++j) {
        const bool continues =
            j > 0 && tree.parent[at(j) - 1] == j && tree.count[at(j) - 1] == tree.count[at(j)] + 1;
        if (!continues)
            runs.first.push_back(j);
        runOfColumn[at(j)] = static_cast<int>(runs.first.size()) - 1;
    }
    runs.first.push_back(n);
    for (std::size_t run = 0; run + 1 < runs.first.size(); ++run) {
        const int above = tree.parent[at(runs.first[run + 1] - 1)];
        runs.parent.push_back(above < 0 ? -1 : runOfColumn[at(above)]);
    }
    return runs;
}

/// The children of every node of a tree given by parents, ascending.
struct ChildLists
{
    explicit ChildLists(std::span<const int> parent)
        : offsets(parent.size() + 1, 0), children(parent.size())
    {
        for (const int p : parent)
            if (p >= 0)
                ++offsets[at(p) + 1];
        std::partial_sum(offsets.begin(), offsets.end(), offsets.begin());
        std::vector<int> next(offsets.begin(), offsets.end() - 1);
        for (std::size_t i = 0; i < parent.size(); ++i)
            if (parent[i] >= 0)
                children[at(next[at(parent[i])]++)] = static_cast<int>(i);
    }
    std::span<int> of(int node)
    {
        return std::span(children).subspan(at(offsets[at(node)]),
                                           at(offsets[at(node) + 1] - offsets[at(node)]));
    }

    std::vector<int> offsets;
    std::vector<int> children;
};

} // namespace

SupernodeTree groupColumns(const EliminationTree& tree)
{
    const Runs runs = runsOfEqualColumns(tree);
    const int runCount = static_cast<int>(runs.parent.size());
    std::vector<std::int64_t> columns(at(runCount));
    std::vector<std::int64_t> height(at(runCount));
    std::vector<std::int64_t> zeros(at(runCount), 0);
    std::vector<int> joinedInto(at(runCount), -1);
    for (int run = 0; run < runCount; ++run) {
        columns[at(run)] = runs.first[at(run) + 1] - runs.first[at(run)];
        height[at(run)] = tree.count[at(runs.first[at(run)])];
    }

    ChildLists children(runs.parent);
    for (int run = 0; run < runCount; ++run) {
        // The children with the most rows share most with the parent: they go first.
        const std::span<int> candidates = children.of(run);
        std::stable_sort(candidates.begin(), candidates.end(),
                         [&](int a, int b) { return height[at(a)] > height[at(b)]; });
        for (const int child : candidates) {
            const std::int64_t joinedColumns = columns[at(run)] + columns[at(child)];
            const std::int64_t joinedHeight = height[at(run)] + columns[at(child)];
            const std::int64_t entries = trapezoid(joinedColumns, joinedHeight);
            const std::int64_t joinedZeros = zeros[at(run)] + zeros[at(child)] + entries -
                                             trapezoid(columns[at(run)], height[at(run)]) -
                                             trapezoid(columns[at(child)], height[at(child)]);
            if (!isWorthJoining(joinedColumns, joinedZeros, entries))
                continue;
            joinedInto[at(child)] = run;
            columns[at(run)] = joinedColumns;
            height[at(run)] = joinedHeight;
            zeros[at(run)] = joinedZeros;
        }
    }

    // A run's number is above those of all that were joined into it, so going down finds the
    // supernode of the target first.
    SupernodeTree result;
    std::vector<int> supernodeOfRun(at(runCount), -1);
    int count = 0;
    for (int run = 0; run < runCount; ++run)
        if (joinedInto[at(run)] < 0)
            supernodeOfRun[at(run)] = count++;
    for (int run = runCount - 1; run >= 0; --run)
        if (joinedInto[at(run)] >= 0)
            supernodeOfRun[at(run)] = supernodeOfRun[at(joinedInto[at(run)])];

    result.columnsOf.resize(at(count));
    result.parent.resize(at(count));
    result.height.resize(at(count));
    for (int run = 0; run < runCount; ++run) {
        const std::size_t supernode = at(supernodeOfRun[at(run)]);
        for (int j = runs.first[at(run)]; j < runs.first[at(run) + 1]; ++j)
            result.columnsOf[supernode].push_back(j);
        if (joinedInto[at(run)] < 0) {
            const int above = runs.parent[at(run)];
            result.parent[supernode] = above < 0 ? -1 : supernodeOfRun[at(above)];
            result.height[supernode] = static_cast<int>(height[at(run)]);
        }
    }
    return result;
}

std::vector<int> eliminationSequence(const SupernodeTree& tree)
{
    const int count = static_cast<int>(tree.parent.size());
    ChildLists children(tree.parent);
    std::vector<std::int64_t> update(at(count)); // what waits on the stack when it is done
    std::vector<std::int64_t> peak(at(count));   // the stack's height while its subtree is done
    const auto riseAbove = [&](int s) { return peak[at(s)] - update[at(s)]; };
    for (int s = 0; s < count; ++s) {
        const auto rows = tree.height[at(s)] - static_cast<int>(tree.columnsOf[at(s)].size());
        update[at(s)] = static_cast<std::int64_t>(rows) * rows;
        const std::span<int> ordered = children.of(s);
        std::stable_sort(ordered.begin(), ordered.end(),
                         [&](int a, int b) { return riseAbove(a) > riseAbove(b); });
        std::int64_t waiting = 0;
        for (const int child : ordered) {
            peak[at(s)] = std::max(peak[at(s)], waiting + peak[at(child)]);
            waiting += update[at(child)];
        }
        peak[at(s)] = std::max(peak[at(s)], waiting + update[at(s)]);
    }

    // Parents first with their children reversed is a postorder backwards.
    std::vector<int> sequence;
    std::vector<int> open;
    for (int s = 0; s < count; ++s) {
        if (tree.parent[at(s)] >= 0)
            continue;
        open.assign(1, s);
        const auto begin = static_cast<std::ptrdiff_t>(sequence.size());
        while (!open.empty()) {
            const int next = open.back();
            open.pop_back();
            sequence.push_back(next);
            const std::span<const int> below = children.of(next);
            open.insert(open.end(), below.begin(), below.end());
        }
        std::reverse(sequence.begin() + begin, sequence.end());
    }
    return sequence;
}

} // namespace unfold3d

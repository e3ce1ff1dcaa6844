#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/seams/SeamMesh.h"

#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace unfold3d
{

/// What a path pays for an edge: whole numbers, so that sums depend neither on their order nor on
/// the rounding of positions. Make them by toPathCost.
using PathCost = std::int64_t;

inline constexpr PathCost unreached = std::numeric_limits<PathCost>::max();

/// From a length in sizes of the mesh, times whatever makes it dear or cheap: rounded so that
/// the same length from other positions costs the same. At least 1, at most what a million such
/// edges can sum up to.
PathCost toPathCost(double cost);

/// Cheapest paths over edges from a set of vertices (Dijkstra 1959). Ties go to the lower edge.
///
/// Keeps storage for the whole mesh between searches and clears only what the last one reached, so
/// a search costs by what it reaches.
class CheapestPaths
{
public:
    /// costs   [edge]  may change between searches
    /// isWall  [edge]  seams: paths don't run along them, and don't go on from vertices on them or
    ///                 on the border, except from sources
    /// All are kept by reference. After a change of isWall, refreshEnds() has to be called.
    CheapestPaths(const SeamMesh& mesh, std::span<const PathCost> costs,
                  std::span<const char> isWall);

    /// Finds again which vertices of these triangles, between border and walls, lie on them.
    void refreshEnds(std::span<const int> triangles);
    bool isEnd(int vertex) const { return isEnd_[static_cast<std::size_t>(vertex)] != 0; }

    /// Where searches stay from now on: [triangle] flags, by reference; everywhere when empty. To
    /// be whole patches, as a walk leaves a patch only from sources between several.
    void stayIn(std::span<const char> region) { region_ = region; }

    /// Finds the way from `sources` to all that can be reached at a cost of at most `limit`.
    void search(std::span<const int> sources, const RunControl& control,
                PathCost limit = unreached);
    /// The same up to the first vertex for which isGoal [vertex] is set and that is no source;
    /// returns it, or -1 where there is none at a cost of at most `limit`.
    int searchNearest(std::span<const int> sources, std::span<const char> isGoal,
                      const RunControl& control, PathCost limit = unreached);

    /// Cost of the way to a vertex; unreached where there is none.
    PathCost costTo(int vertex) const { return arrivals_[static_cast<std::size_t>(vertex)].cost; }
    /// The last edge on the way to a vertex; -1 at sources and where there is no way.
    int edgeTo(int vertex) const { return arrivals_[static_cast<std::size_t>(vertex)].edge; }
    /// The vertex before on the way to this one, which is no source.
    int previousOf(int vertex) const;
    /// The edges of the way to a vertex, from the vertex to its source.
    std::vector<int> pathTo(int vertex) const;
    /// The vertices that the search reached, by rising cost.
    std::span<const int> reached() const { return reached_; }

private:
    /// What a search knows of a vertex; together, since it asks for all of it at once.
    struct Arrival
    {
        PathCost cost = unreached;
        int edge = -1;
        bool isDone = false;
    };

    int run(std::span<const int> sources, std::span<const char> isGoal, PathCost limit,
            const RunControl& control);
    void clear();

    const SeamMesh& mesh_;
    std::span<const PathCost> costs_;
    std::span<const char> isWall_;
    std::span<const char> region_;
    std::vector<char> isEnd_;
    std::vector<Arrival> arrivals_; ///< [vertex]
    std::vector<int> touched_;
    std::vector<int> reached_;
};

} // namespace unfold3d

#include "Unfold3D/linear/VertexSeparator.h"

#include "Unfold3D/linear/ClusteredGraph.h"
#include "Unfold3D/linear/VertexCut.h"

#include <algorithm>
#include <array>

namespace unfold3d
{

namespace
{

/// Nodes are joined to clusters until there are no more than this many: enough to see the shape of
/// the whole.
constexpr int mostClusters = 20'000;
/// The lesser side has at least this share of the nodes; with less, nothing is won by a cut.
constexpr double leastShare = 0.1;

using Sides = std::vector<Side>;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

ClusteredGraph fewClusters(const VertexGraph& graph, const RunControl& control)
{
    ClusteredGraph clusters = joined(clustersOfOne(graph));
    control.checkpoint();
    while (clusters.graph.size() > mostClusters) {
        ClusteredGraph larger = joined(clusters);
        control.checkpoint();
        if (larger.graph.size() == clusters.graph.size())
            break; // no two of them meet
        clusters = std::move(larger);
    }
    return clusters;
}

/// The separator and the clusters beside it.
Sides widened(const VertexGraph& graph, const Sides& sides)
{
    Sides wide = sides;
    for (int c = 0; c < graph.size(); ++c)
        if (sides[at(c)] == Side::Separator)
            for (const int neighbour : graph.of(c))
                wide[at(neighbour)] = Side::Separator;
    return wide;
}

std::array<std::size_t, 3> sizesOf(const Sides& sides)
{
    std::array<std::size_t, 3> sizes{};
    for (const Side side : sides)
        ++sizes[static_cast<std::size_t>(side)];
    return sizes;
}

/// Puts the fewest nodes of the band, which is marked as the separator, into the separator, and the
/// others to the sides.
void thin(const VertexGraph& graph, Sides& sides)
{
    std::vector<int> band;
    std::vector<int> placeInBand(sides.size(), -1);
    for (int v = 0; v < graph.size(); ++v)
        if (sides[at(v)] == Side::Separator) {
            placeInBand[at(v)] = static_cast<int>(band.size());
            band.push_back(v);
        }
    // The cut is the nearest to the larger side, so that this becomes no larger.
    const auto sizes = sizesOf(sides);
    const Side source = sizes[0] >= sizes[1] ? Side::Low : Side::High;
    const Side sink = source == Side::Low ? Side::High : Side::Low;
    VertexGraph ofBand;
    std::vector<Shore> shore(band.size(), Shore::Within);
    for (std::size_t i = 0; i < band.size(); ++i) {
        bool touches[2] = {};
        for (const int neighbour : graph.of(band[i])) {
            if (placeInBand[at(neighbour)] >= 0)
                ofBand.neighbours.push_back(placeInBand[at(neighbour)]);
            else
                touches[sides[at(neighbour)] == sink] = true;
        }
        ofBand.offsets.push_back(static_cast<int>(ofBand.neighbours.size()));
        if (touches[0] || touches[1])
            shore[i] = !touches[1] ? Shore::Source : !touches[0] ? Shore::Sink : Shore::Both;
    }
    const std::vector<Shore> parted = leastCut(ofBand, shore);
    for (std::size_t i = 0; i < band.size(); ++i)
        if (parted[i] != Shore::Both)
            sides[at(band[i])] = parted[i] == Shore::Source ? source : sink;
}

Sides ofNodes(const ClusteredGraph& clusters, const Sides& ofClusters)
{
    Sides sides;
    sides.reserve(clusters.ofNode.size());
    for (const int cluster : clusters.ofNode)
        sides.push_back(ofClusters[at(cluster)]);
    return sides;
}

bool areBalanced(const Sides& sides)
{
    const auto sizes = sizesOf(sides);
    return static_cast<double>(std::min(sizes[0], sizes[1])) >=
           leastShare * static_cast<double>(sides.size());
}

} // namespace

std::optional<Sides> separate(const VertexGraph& graph, const RunControl& control)
{
    const ClusteredGraph clusters = fewClusters(graph, control);
    const std::optional<Sides> coarse = dissectOnce(clusters.graph, clusters.weight);
    control.checkpoint();
    if (!coarse)
        return std::nullopt;
    Sides sides = ofNodes(clusters, widened(clusters.graph, *coarse));
    if (!areBalanced(sides))
        sides = ofNodes(clusters, *coarse);
    if (!areBalanced(sides))
        return std::nullopt;
    thin(graph, sides);
    control.checkpoint();
    return sides;
}

} // namespace unfold3d

#include "Unfold3D/linear/VertexCut.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <random>

namespace unfold3d
{

namespace
{

struct Band
{
    VertexGraph graph;
    std::vector<Shore> shore;
};

Band randomBand(std::mt19937& random, int nodeCount)
{
    std::uniform_int_distribution<int> node(0, nodeCount - 1);
    std::vector<NodePair> pairs;
    for (int i = 0; i < 2 * nodeCount; ++i)
        pairs.push_back({node(random), node(random)});
    Band band{graphOfPairs(pairs, nodeCount), {}};
    for (int v = 0; v < nodeCount; ++v)
        band.shore.push_back(static_cast<Shore>(std::max(0, node(random) - nodeCount + 5) % 4));
    return band;
}

/// Does the set of nodes, a bit each, part the shores?
bool parts(const Band& band, unsigned cut)
{
    std::vector<int> reached;
    unsigned seen = cut;
    const auto reach = [&](int v) {
        if ((seen >> v & 1U) == 0)
            reached.push_back(v);
        seen |= 1U << v;
    };
    for (int v = 0; v < band.graph.size(); ++v)
        if (band.shore[static_cast<std::size_t>(v)] == Shore::Source ||
            band.shore[static_cast<std::size_t>(v)] == Shore::Both)
            reach(v);
    for (std::size_t i = 0; i < reached.size(); ++i) {
        const Shore shore = band.shore[static_cast<std::size_t>(reached[i])];
        if (shore == Shore::Sink || shore == Shore::Both)
            return false;
        for (const int neighbour : band.graph.of(reached[i]))
            reach(neighbour);
    }
    return true;
}

} // namespace

TEST(VertexCut, PartsTheShoresByTheFewestNodes)
{
    std::mt19937 random(5);
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        const int nodeCount = 4 + round % 8;
        const Band band = randomBand(random, nodeCount);
        int fewest = nodeCount;
        for (unsigned cut = 0; cut < 1U << nodeCount; ++cut)
            if (parts(band, cut))
                fewest = std::min(fewest, std::popcount(cut));
        unsigned found = 0;
        const std::vector<Shore> sides = leastCut(band.graph, band.shore);
        for (int v = 0; v < nodeCount; ++v)
            if (sides[static_cast<std::size_t>(v)] == Shore::Both)
                found |= 1U << v;
        EXPECT_TRUE(parts(band, found));
        EXPECT_EQ(std::popcount(found), fewest);
    }
}

} // namespace unfold3d

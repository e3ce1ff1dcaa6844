#include "Unfold3D/seams/ConnectionHash.h"

namespace unfold3d
{

namespace
{

/// Rings of surroundings.
constexpr int rounds = 7;

} // namespace

std::vector<std::uint64_t> connectionHashes(const VertexGraph& graph, std::span<const char> kinds)
{
    std::vector<std::uint64_t> hashes(kinds.size());
    for (std::size_t v = 0; v < hashes.size(); ++v)
        hashes[v] = scrambled(2 * graph.of(static_cast<int>(v)).size() +
                              static_cast<std::uint64_t>(kinds[v] != 0));
    std::vector<std::uint64_t> next(hashes.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t v = 0; v < hashes.size(); ++v) {
            // A sum, so that the order of the neighbours doesn't matter.
            std::uint64_t sum = 3 * hashes[v];
            for (const int w : graph.of(static_cast<int>(v)))
                sum += hashes[static_cast<std::size_t>(w)];
            next[v] = scrambled(sum);
        }
        hashes.swap(next);
    }
    return hashes;
}

} // namespace unfold3d

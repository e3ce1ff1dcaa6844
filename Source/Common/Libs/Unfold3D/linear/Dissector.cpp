#include "Unfold3D/linear/Dissector.h"

#include <metis.h>

#include <mutex>

namespace unfold3d
{

namespace
{

static_assert(sizeof(idx_t) == sizeof(int));

std::mutex oneAtATime;

/// What the library takes: lists of its own, which it may write to.
struct Task
{
    explicit Task(const VertexGraph& graph)
        : size(graph.size()), offsets(graph.offsets), neighbours(graph.neighbours),
          options(METIS_NOPTIONS)
    {
        METIS_SetDefaultOptions(options.data());
        options[METIS_OPTION_SEED] = 1;
        options[METIS_OPTION_NUMBERING] = 0;
        // Vertices of a mesh have few neighbours in common: looking for equal rows costs and finds
        // none.
        options[METIS_OPTION_COMPRESS] = 0;
    }

    idx_t size;
    std::vector<idx_t> offsets;
    std::vector<idx_t> neighbours;
    std::vector<idx_t> options;
};

} // namespace

std::optional<std::vector<Side>> dissectOnce(const VertexGraph& graph, std::span<const int> weights)
{
    Task task(graph);
    std::vector<idx_t> ownWeights(weights.begin(), weights.end());
    std::vector<idx_t> parts(weights.size());
    idx_t separatorSize = 0;
    const std::scoped_lock lock(oneAtATime);
    if (METIS_ComputeVertexSeparator(&task.size, task.offsets.data(), task.neighbours.data(),
                                     ownWeights.data(), task.options.data(), &separatorSize,
                                     parts.data()) != METIS_OK)
        return std::nullopt;
    std::vector<Side> sides;
    sides.reserve(parts.size());
    for (const idx_t part : parts)
        sides.push_back(static_cast<Side>(part));
    return sides;
}

std::optional<std::vector<int>> dissectToTheEnd(const VertexGraph& graph)
{
    Task task(graph);
    std::vector<idx_t> oldOfNew(graph.offsets.size() - 1);
    std::vector<idx_t> newOfOld(oldOfNew.size());
    const std::scoped_lock lock(oneAtATime);
    if (METIS_NodeND(&task.size, task.offsets.data(), task.neighbours.data(), nullptr,
                     task.options.data(), oldOfNew.data(), newOfOld.data()) != METIS_OK)
        return std::nullopt;
    return oldOfNew;
}

} // namespace unfold3d

#include "Unfold3D/linear/EliminationOrder.h"

#include <Eigen/OrderingMethods>
#include <Eigen/SparseCore>
#include <metis.h>

#include <algorithm>
#include <mutex>
#include <numeric>

namespace unfold3d
{

namespace
{

/// Below this many nodes there is nothing to dissect.
constexpr int smallestDissected = 64;

} // namespace

std::vector<int> minimumDegreeOrder(const VertexGraph& graph)
{
    const int n = graph.size();
    // A row without an entry on the diagonal would count as full.
    const auto entryCount = graph.neighbours.size() + static_cast<std::size_t>(n);
    Eigen::SparseMatrix<double> pattern(n, n);
    pattern.resizeNonZeros(static_cast<Eigen::Index>(entryCount));
    int* entry = pattern.innerIndexPtr();
    for (int node = 0; node < n; ++node) {
        pattern.outerIndexPtr()[node] = static_cast<int>(entry - pattern.innerIndexPtr());
        *entry++ = node;
        entry = std::copy(graph.of(node).begin(), graph.of(node).end(), entry);
    }
    pattern.outerIndexPtr()[n] = static_cast<int>(entryCount);
    std::fill_n(pattern.valuePtr(), entryCount, 1.0);
    Eigen::PermutationMatrix<Eigen::Dynamic, Eigen::Dynamic, int> order;
    Eigen::internal::minimum_degree_ordering(pattern, order);
    return {order.indices().data(), order.indices().data() + n};
}

std::vector<int> dissectionOrder(const VertexGraph& graph)
{
    if (graph.size() < smallestDissected || graph.neighbours.empty())
        return minimumDegreeOrder(graph);

    // The dissection draws its random numbers from the one generator of the process and seeds it
    // first: two at a time would take numbers from each other, and the order would not be the same
    // on every run.
    static std::mutex oneAtATime;
    const std::scoped_lock lock(oneAtATime);

    static_assert(sizeof(idx_t) == sizeof(int));
    idx_t n = graph.size();
    std::vector<idx_t> offsets(graph.offsets.begin(), graph.offsets.end());
    std::vector<idx_t> neighbours(graph.neighbours.begin(), graph.neighbours.end());
    std::vector<idx_t> oldOfNew(static_cast<std::size_t>(n));
    std::vector<idx_t> newOfOld(static_cast<std::size_t>(n));
    std::vector<idx_t> options(METIS_NOPTIONS);
    METIS_SetDefaultOptions(options.data());
    options[METIS_OPTION_SEED] = 1;
    options[METIS_OPTION_NUMBERING] = 0;
    // Vertices of a mesh have few neighbours in common: looking for equal rows costs and finds
    // none.
    options[METIS_OPTION_COMPRESS] = 0;
    const int status = METIS_NodeND(&n, offsets.data(), neighbours.data(), nullptr, options.data(),
                                    oldOfNew.data(), newOfOld.data());
    if (status != METIS_OK)
        return minimumDegreeOrder(graph);
    return {oldOfNew.begin(), oldOfNew.end()};
}

} // namespace unfold3d

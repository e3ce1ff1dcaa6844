#include "UVUtils/editing/MarkedVertices.h"

#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/model/UVSlot.h"

namespace
{

/// The numbers below an end that have a mark, ascending. Each is written and stays if it counts, so
/// that there is no branch to mispredict.
template <class MarkOf>
std::vector<unsigned int> markedBelow(unsigned int end, const MarkOf& markOf)
{
    std::vector<unsigned int> marked(end);
    std::size_t count = 0;
    for (unsigned int i = 0; i < end; ++i) {
        marked[count] = i;
        count += markOf(i);
    }
    marked.resize(count);
    return marked;
}

} // namespace

MarkedVertices::MarkedVertices(const CompactShellMesh& mesh, std::span<const unsigned int> ids)
    : mesh_(mesh), marks_(vertexCountOf(mesh.getGeomPtr()))
{
    const std::span<const unsigned int> compactIdOf(mesh.getVertFToC());
    for (const unsigned int id : ids) {
        if (id >= compactIdOf.size())
            continue;
        marks_[compactIdOf[id]] = 1;
        isEmpty_ = false;
    }
}

std::vector<unsigned int> MarkedVertices::compactIds() const
{
    return markedBelow(static_cast<unsigned int>(marks_.size()),
                       [this](unsigned int id) { return marks_[id]; });
}

std::vector<unsigned int> MarkedVertices::nodeIds() const
{
    const std::span<const unsigned int> compactIdOf(mesh_.getVertFToC());
    return markedBelow(static_cast<unsigned int>(compactIdOf.size()),
                       [&](unsigned int id) { return marks_[compactIdOf[id]]; });
}

#include "UVUtils/editing/MarkedVertices.h"

#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/model/UVSlot.h"

#include <algorithm>

MarkedVertices::MarkedVertices(const CompactShellMesh& mesh, std::span<const unsigned int> ids)
    : marks_(vertexCountOf(mesh.getGeomPtr()))
{
    const std::span<const unsigned int> compactIdOf(mesh.getVertFToC());
    for (const unsigned int id : ids)
        if (id < compactIdOf.size())
            marks_[compactIdOf[id]] = 1;
    count_ = static_cast<std::size_t>(std::count(marks_.begin(), marks_.end(), 1));
}

std::vector<unsigned int> MarkedVertices::compactIds() const
{
    // Each id is written and stays if it counts, so that there is no branch to mispredict.
    std::vector<unsigned int> ids(marks_.size());
    std::size_t count = 0;
    for (unsigned int id = 0; id < marks_.size(); ++id) {
        ids[count] = id;
        count += marks_[id];
    }
    ids.resize(count);
    return ids;
}

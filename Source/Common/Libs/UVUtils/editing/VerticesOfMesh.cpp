#include "UVUtils/editing/VerticesOfMesh.h"

#include "UVUtils/compactmesh/CompactShellMesh.h"
#include "UVUtils/model/EdgeLists.h"
#include "UVUtils/model/SortAndDropRepeats.h"
#include "UVUtils/model/UVSlot.h"

#include <algorithm>

namespace
{

using Ids = std::vector<unsigned int>;

/// Brings ids into ascending order and keeps each once. Many ids are marked, which takes one pass
/// over all `end` numbers that there may be; few are sorted.
void order(Ids& ids, std::size_t end)
{
    constexpr std::size_t few = 16; // about the steps that a sort takes for each id
    if (ids.size() < end / few) {
        sortAndDropRepeats(ids);
        return;
    }
    std::vector<unsigned char> isMarked(end, 0);
    for (const unsigned int id : ids)
        isMarked[id] = 1;
    ids.resize(end);
    std::size_t count = 0;
    for (std::size_t id = 0; id < end; ++id) {
        ids[count] = static_cast<unsigned int>(id);
        count += isMarked[id];
    }
    ids.resize(count);
}

} // namespace

Ids meshVerticesOf(const CompactShellMesh& mesh, std::span<const unsigned int> ids)
{
    const std::size_t end = mesh.getVertFToC().size();
    Ids known;
    if (!std::ranges::all_of(ids, [end](unsigned int id) { return id < end; })) {
        std::ranges::copy_if(ids, std::back_inserter(known),
                             [end](unsigned int id) { return id < end; });
        ids = known;
    }
    Ids compactIds;
    mesh.mapVertsFToC(ids.data(), sizeOf(ids), compactIds);
    order(compactIds, vertexCountOf(mesh.getGeomPtr()));
    return compactIds;
}

Ids nodeVerticesOf(const CompactShellMesh& mesh, std::span<const unsigned int> compactIds)
{
    Ids ids;
    ids.reserve(mesh.getVertFToC().size());
    mesh.mapVertsCToF(compactIds.data(), sizeOf(compactIds), ids, true);
    order(ids, mesh.getVertFToC().size());
    return ids;
}

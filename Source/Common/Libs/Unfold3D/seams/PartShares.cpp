#include "Unfold3D/seams/PartShares.h"

#include "Unfold3D/base/OffsetArray.h"

#include <algorithm>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

} // namespace

PartShares findPartShares(const SeamMesh& mesh, const CoarseMesh& coarse, const MeshParts& parts)
{
    std::vector<int> vertexOfCorner;
    vertexOfCorner.reserve(3 * mesh.triangles.size());
    for (const Triangle& t : mesh.triangles)
        for (const int v : t)
            vertexOfCorner.push_back(coarse.coarseOf[at(v)]);
    const OffsetArray<int> corners = groupByKey(vertexOfCorner, coarse.vertexCount());

    PartShares result;
    std::vector<PartShares::Share>& shares = result.shares;
    for (int v = 0; v < coarse.vertexCount(); ++v) {
        const auto first = static_cast<std::ptrdiff_t>(shares.size());
        for (const int corner : corners[v]) {
            const int part = parts.ofTriangle[at(corner / 3)];
            auto share = std::find_if(shares.begin() + first, shares.end(),
                                      [&](const PartShares::Share& s) { return s.part == part; });
            if (share == shares.end())
                share = shares.insert(share, {v, part, 0.0});
            share->area += mesh.areas[at(corner / 3)] / 3.0;
        }
    }
    return result;
}

} // namespace unfold3d

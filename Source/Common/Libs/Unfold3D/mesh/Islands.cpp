#include "Unfold3D/mesh/Islands.h"

#include "Unfold3D/base/DisjointSets.h"

#include <numeric>
#include <utility>

namespace unfold3d
{

namespace
{

struct Membership
{
    DisjointSets sets;
    std::vector<char> used;  ///< [vertex] does it belong to an island?
    std::vector<int> anchor; ///< as in Islands
};

void joinByTriangles(const ImportedMesh& mesh, Membership& members)
{
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
        if (mesh.parts[t] == ImportedMesh::LeftOut)
            continue;
        const Triangle& corner = mesh.triangles[t];
        members.sets.join(corner[0], corner[1]);
        members.sets.join(corner[0], corner[2]);
        for (const int v : corner)
            members.used[static_cast<std::size_t>(v)] = 1;
    }
}

/// The left-out triangles at each vertex.
OffsetArray<int> leftOutTrianglesAt(const ImportedMesh& mesh)
{
    std::vector<int> vertexOfCorner(3 * mesh.triangles.size(), -1);
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t)
        if (mesh.parts[t] == ImportedMesh::LeftOut)
            for (std::size_t i = 0; i < 3; ++i)
                vertexOfCorner[3 * t + i] = mesh.triangles[t][i];
    OffsetArray<int> at = groupByKey(vertexOfCorner, mesh.vertexCount());
    for (int& corner : at.flat)
        corner /= 3;
    return at;
}

/// Vertices that only left-out triangles use take the place of a neighbour in them that has one;
/// where a chain of such triangles hangs on an island, this walks down the chain. A chain that
/// hangs on no island makes one of its own, without surface.
void joinLeftovers(const ImportedMesh& mesh, Membership& members)
{
    const OffsetArray<int> leftOutAt = leftOutTrianglesAt(mesh);
    const auto spreadFrom = [&](std::vector<int> front) {
        for (std::size_t next = 0; next < front.size(); ++next) {
            const int from = front[next];
            for (const int t : leftOutAt[from])
                for (const int v : mesh.triangles[static_cast<std::size_t>(t)]) {
                    if (members.used[static_cast<std::size_t>(v)])
                        continue;
                    members.used[static_cast<std::size_t>(v)] = 1;
                    members.sets.join(from, v);
                    members.anchor[static_cast<std::size_t>(v)] =
                        members.anchor[static_cast<std::size_t>(from)];
                    front.push_back(v);
                }
        }
    };

    std::vector<int> onIslands;
    for (int v = 0; v < mesh.vertexCount(); ++v)
        if (members.used[static_cast<std::size_t>(v)] && !leftOutAt[v].empty())
            onIslands.push_back(v);
    spreadFrom(std::move(onIslands));

    for (int v = 0; v < mesh.vertexCount(); ++v) {
        if (members.used[static_cast<std::size_t>(v)] || leftOutAt[v].empty())
            continue;
        members.used[static_cast<std::size_t>(v)] = 1;
        spreadFrom({v});
    }
}

} // namespace

Islands findIslands(const ImportedMesh& mesh)
{
    Membership members{DisjointSets(mesh.vertexCount()),
                       std::vector<char>(mesh.positions.size(), 0),
                       std::vector<int>(mesh.positions.size())};
    std::iota(members.anchor.begin(), members.anchor.end(), 0);
    joinByTriangles(mesh, members);
    joinLeftovers(mesh, members);

    Islands islands;
    islands.ofVertex.assign(mesh.positions.size(), Islands::noIsland);
    int count = 0;
    for (int v = 0; v < mesh.vertexCount(); ++v) {
        if (!members.used[static_cast<std::size_t>(v)])
            continue;
        const int lowest = members.sets.find(v); // numbered already unless it is v itself
        islands.ofVertex[static_cast<std::size_t>(v)] =
            lowest == v ? count++ : islands.ofVertex[static_cast<std::size_t>(lowest)];
    }

    islands.ofTriangle.reserve(mesh.triangles.size());
    std::vector<int> takingPart;
    takingPart.reserve(mesh.triangles.size());
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
        const int island = islands.ofVertex[static_cast<std::size_t>(mesh.triangles[t][0])];
        islands.ofTriangle.push_back(island);
        takingPart.push_back(mesh.parts[t] == ImportedMesh::LeftOut ? -1 : island);
    }
    islands.anchor = std::move(members.anchor);
    islands.vertices = groupByKey(islands.ofVertex, count);
    islands.triangles = groupByKey(takingPart, count);
    return islands;
}

} // namespace unfold3d

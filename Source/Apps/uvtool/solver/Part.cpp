#include "solver/Part.h"

#include "solver/RoundingRepair.h"

namespace uvtool
{
namespace
{

/// Triangles without an area have to turn as most of their island does: rounding must not make
/// flipped ones of them.
void turnFlatOnesWithTheirIsland(Part& part)
{
    const Islands islands = findIslands(part.mesh.triangles, part.mesh.vertexCount());
    std::vector<std::ptrdiff_t> sum(islands.count(), 0);
    for (std::size_t t = 0; t < part.turns.size(); ++t)
        sum[static_cast<std::size_t>(islands.ofTriangle[t])] += part.turns[t];
    for (std::size_t t = 0; t < part.turns.size(); ++t)
        if (part.turns[t] == 0)
            part.turns[t] = sum[static_cast<std::size_t>(islands.ofTriangle[t])] < 0 ? -1 : 1;
}

} // namespace

Part makePart(const DocumentGeometry& geometry, std::size_t number, const Survey& survey)
{
    SolverMesh mesh = withoutIslands(survey.mesh, survey.islands, survey.islands.isClosed);
    FramedPoints framed = intoFrame(scenePositionsOfCorners(geometry, mesh.cornerOfVertex));
    return {number, std::move(mesh), framed.frame, std::move(framed.points), {}, {}};
}

void takeUVs(Part& part, const DocumentGeometry& geometry, std::size_t slot)
{
    part.uvs.clear();
    part.uvs.reserve(part.mesh.vertexCount());
    for (const std::uint32_t corner : part.mesh.cornerOfVertex)
        part.uvs.push_back(geometry.uvs[slot].at(corner));
    part.turns = turnsOf(part.mesh.triangles, part.uvs);
    turnFlatOnesWithTheirIsland(part);
}

void leaveOut(Part& part, const Islands& islands, const std::vector<char>& isLeftOut)
{
    SolverMesh mesh = withoutIslands(part.mesh, islands, isLeftOut);
    std::vector<Vec3f> positions(mesh.vertexCount());
    std::vector<Vec2f> uvs(mesh.vertexCount());
    std::size_t next = 0;
    for (std::size_t t = 0; t < part.mesh.triangleCount(); ++t) {
        if (isLeftOut[static_cast<std::size_t>(islands.ofTriangle[t])] != 0)
            continue;
        for (std::size_t i = 3 * t; i < 3 * t + 3; ++i) {
            const std::uint32_t vertex = mesh.triangles[next++];
            positions[vertex] = part.positions[part.mesh.triangles[i]];
            uvs[vertex] = part.uvs[part.mesh.triangles[i]];
        }
    }
    part.mesh = std::move(mesh);
    part.positions = std::move(positions);
    part.uvs = std::move(uvs);
}

} // namespace uvtool

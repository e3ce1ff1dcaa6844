#include "SeamChecks.h"

#include "LayoutChecks.h"

#include "Unfold3D/base/DisjointSets.h"
#include "Unfold3D/start/StartDistortion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <utility>

using unfold3d::DisjointSets;
using unfold3d::IslandMesh;
using unfold3d::Triangle;
using unfold3d::Vec2;
using unfold3d::Vec3;

namespace seams
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

std::pair<int, int> edgeAt(const IslandMesh& mesh, std::size_t triangle, std::size_t corner)
{
    return std::minmax(mesh.triangles[triangle][corner],
                       mesh.triangles[triangle][(corner + 1) % 3]);
}

double diagonalOf(const IslandMesh& mesh)
{
    Vec3 low = mesh.positions.front();
    Vec3 high = low;
    for (const Vec3& p : mesh.positions) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    return length(high - low);
}

/// openSides  corners from which the border runs to the next
void countCells(CutMesh& cut, const std::vector<int>& openSides)
{
    std::vector<int> twiceEuler(cut.patches.size(), 0);
    std::vector<char> isCounted(cut.mesh.positions.size(), 0);
    for (std::size_t t = 0; t < cut.mesh.triangles.size(); ++t) {
        const auto& [a, b, c] = cut.mesh.triangles[t];
        Patch& patch = cut.patches[at(cut.patchOf[t])];
        ++patch.triangles;
        patch.area += 0.5 * length(cross(cut.mesh.positions[at(b)] - cut.mesh.positions[at(a)],
                                         cut.mesh.positions[at(c)] - cut.mesh.positions[at(a)]));
        --twiceEuler[at(cut.patchOf[t])]; // three halves of an edge, and itself
        for (const int v : {a, b, c})
            twiceEuler[at(cut.patchOf[t])] += std::exchange(isCounted[at(v)], 1) ? 0 : 2;
    }
    DisjointSets loops(cut.mesh.vertexCount());
    for (const int side : openSides) {
        const auto& [a, b] = edgeAt(cut.mesh, at(side / 3), at(side % 3));
        const int p = cut.patchOf[at(side / 3)];
        --twiceEuler[at(p)];
        cut.patches[at(p)].borders += loops.join(a, b) ? 0 : 1; // the side that closes a loop
    }
    for (std::size_t p = 0; p < cut.patches.size(); ++p)
        cut.patches[p].handles = 1 - (twiceEuler[p] + 2 * cut.patches[p].borders) / 4;
}

} // namespace

Edges proposed(const IslandMesh& mesh, std::initializer_list<SolverSession::Key> mode)
{
    SolverSession session(mesh);
    std::vector<SolverSession::Key> keys{{"#PrimType string \"Edge\"", "Edge"},
                                         {"#Select bool", true},
                                         {"#ResetBefore bool", true},
                                         {"#ReturnEdgesSel bool"}};
    keys.insert(keys.end(), mode.begin(), mode.end());
    session.run("Select", keys);
    EXPECT_FALSE(session.hasError()) << session.error();
    const std::vector<int> pairs = session.last()->GetInts("#EdgeSelection Ints");
    Edges edges;
    for (std::size_t i = 0; i + 1 < pairs.size(); i += 2)
        edges.push_back(edgeAt(mesh, at(pairs[i]), at(pairs[i + 1])));
    std::sort(edges.begin(), edges.end());
    EXPECT_EQ(std::adjacent_find(edges.begin(), edges.end()), edges.end());
    return edges;
}

CutMesh::CutMesh(const IslandMesh& whole, const Edges& seams)
{
    std::map<std::pair<int, int>, std::vector<int>> sides; // corners where an edge begins
    for (std::size_t t = 0; t < whole.triangles.size(); ++t)
        for (std::size_t i = 0; i < 3; ++i)
            sides[edgeAt(whole, t, i)].push_back(static_cast<int>(3 * t + i));
    const auto vertexAt = [&](int corner) {
        return whole.triangles[at(corner / 3)][at(corner % 3)];
    };
    DisjointSets corners(static_cast<int>(3 * whole.triangles.size()));
    DisjointSets parts(whole.triangleCount());
    std::vector<int> openSides;
    for (const auto& [edge, begins] : sides) {
        if (begins.size() != 2 || std::binary_search(seams.begin(), seams.end(), edge)) {
            openSides.insert(openSides.end(), begins.begin(), begins.end());
            continue;
        }
        parts.join(begins[0] / 3, begins[1] / 3);
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) {
                const int a = begins[0] / 3 * 3 + i;
                const int b = begins[1] / 3 * 3 + j;
                if (vertexAt(a) == vertexAt(b) &&
                    (vertexAt(a) == edge.first || vertexAt(a) == edge.second))
                    corners.join(a, b);
            }
    }
    std::map<int, int> numberOf;
    for (int c = 0; c < 3 * whole.triangleCount(); ++c) {
        const auto [place, isNew] = numberOf.try_emplace(corners.find(c), mesh.vertexCount());
        if (isNew)
            mesh.positions.push_back(whole.positions[at(vertexAt(c))]);
        if (c % 3 == 0)
            mesh.triangles.emplace_back();
        mesh.triangles.back()[at(c % 3)] = place->second;
    }
    std::map<int, int> patchOfPart;
    for (int t = 0; t < whole.triangleCount(); ++t)
        patchOf.push_back(
            patchOfPart.try_emplace(parts.find(t), static_cast<int>(patchOfPart.size()))
                .first->second);
    patches.resize(patchOfPart.size());
    countCells(*this, openSides);
    for (const auto& [a, b] : seams)
        seamLength += length(whole.positions[at(b)] - whole.positions[at(a)]) / diagonalOf(whole);
}

double worstEnergy(const CutMesh& cut)
{
    SolverSession session(cut.mesh);
    session.unfold();
    EXPECT_FALSE(session.hasError()) << session.error();
    EXPECT_TRUE(session.warning().empty()) << session.warning();
    const std::vector<Vec2> uv = session.exportUVs();
    EXPECT_EQ(layout::countFlips(cut.mesh.triangles, uv), 0);
    std::vector<IslandMesh> parts(cut.patches.size());
    for (std::size_t t = 0; t < cut.mesh.triangles.size(); ++t)
        parts[at(cut.patchOf[t])].triangles.push_back(cut.mesh.triangles[t]);
    double worst = 4.0;
    for (IslandMesh& part : parts) {
        part.positions = cut.mesh.positions;
        worst = std::max(worst, unfold3d::startDistortion(part, uv));
    }
    return worst;
}

} // namespace seams

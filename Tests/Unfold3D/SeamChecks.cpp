#include "SeamChecks.h"

#include "LayoutChecks.h"

#include "Unfold3D/base/DisjointSets.h"
#include "Unfold3D/base/RestTriangle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <set>

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

/// Loops of the edges that one triangle has, vertex after vertex.
int countLoops(const std::vector<std::array<int, 2>>& border, int vertexCount)
{
    DisjointSets loops(vertexCount);
    std::set<int> onBorder;
    for (const auto& [a, b] : border) {
        loops.join(a, b);
        onBorder.insert(a);
    }
    return static_cast<int>(
        std::count_if(onBorder.begin(), onBorder.end(), [&](int v) { return loops.find(v) == v; }));
}

void countCells(CutMesh& cut)
{
    const auto patchCount = cut.patches.size();
    std::vector<std::set<int>> vertices(patchCount);
    std::vector<std::map<std::pair<int, int>, int>> edges(patchCount);
    for (std::size_t t = 0; t < cut.mesh.triangles.size(); ++t) {
        const std::size_t p = at(cut.patchOf[t]);
        const auto& [a, b, c] = cut.mesh.triangles[t];
        ++cut.patches[p].triangles;
        cut.patches[p].area +=
            0.5 * length(cross(cut.mesh.positions[at(b)] - cut.mesh.positions[at(a)],
                               cut.mesh.positions[at(c)] - cut.mesh.positions[at(a)]));
        for (std::size_t i = 0; i < 3; ++i) {
            vertices[p].insert(cut.mesh.triangles[t][i]);
            ++edges[p][edgeAt(cut.mesh, t, i)];
        }
    }
    for (std::size_t p = 0; p < patchCount; ++p) {
        std::vector<std::array<int, 2>> border;
        for (const auto& [edge, uses] : edges[p])
            if (uses == 1)
                border.push_back({edge.first, edge.second});
        Patch& patch = cut.patches[p];
        patch.borders = countLoops(border, cut.mesh.vertexCount());
        const int euler = static_cast<int>(vertices[p].size()) - static_cast<int>(edges[p].size()) +
                          patch.triangles;
        patch.handles = (2 - euler - patch.borders) / 2;
    }
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
    for (const auto& [edge, begins] : sides) {
        if (begins.size() != 2 || std::binary_search(seams.begin(), seams.end(), edge))
            continue;
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
    countCells(*this);
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
    struct Sums
    {
        double area = 0.0;
        double stretch = 0.0; ///< squares of both singular values, by the area
        double squeeze = 0.0; ///< of their inverses
    };
    std::vector<Sums> sums(cut.patches.size());
    for (std::size_t t = 0; t < cut.mesh.triangles.size(); ++t) {
        const auto& [a, b, c] = cut.mesh.triangles[t];
        const unfold3d::RestTriangle rest = unfold3d::restTriangle(
            cut.mesh.positions[at(a)], cut.mesh.positions[at(b)], cut.mesh.positions[at(c)], 0.0);
        const Vec2 alongX = (1.0 / rest.bx) * (uv[at(b)] - uv[at(a)]);
        const Vec2 alongY = (1.0 / rest.cy) * (uv[at(c)] - uv[at(a)] - rest.cx * alongX);
        const double squares = dot(alongX, alongX) + dot(alongY, alongY);
        const double determinant = cross(alongX, alongY);
        Sums& own = sums[at(cut.patchOf[t])];
        own.area += rest.area();
        own.stretch += rest.area() * squares;
        own.squeeze += rest.area() * squares / (determinant * determinant);
    }
    double worst = 4.0;
    for (const Sums& own : sums) // at the best scale of each
        worst = std::max(worst, 2.0 * std::sqrt(own.stretch * own.squeeze) / own.area);
    return worst;
}

} // namespace seams

#include "Unfold3D/seams/SeamMesh.h"

#include "Unfold3D/mesh/Winding.h"
#include "Unfold3D/seams/CanonicalOrder.h"
#include "Unfold3D/seams/SurfaceExtent.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>
#include <utility>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Height of a triangle, as a share of the size, below which its normal is rounding rather than
/// shape: positions that went through floats are off by up to 1e-7 of the size, which turns the
/// normal of such a triangle by a thousandth.
constexpr double noNormalHeight = 1e-4;

void takeSoundTriangles(const ImportedMesh& imported, SeamMesh& mesh)
{
    for (int t = 0; t < imported.triangleCount(); ++t)
        if (imported.parts[at(t)] != ImportedMesh::LeftOut) {
            mesh.triangles.push_back(imported.triangles[at(t)]);
            mesh.importedTriangle.push_back(t);
        }
}

/// Winds the triangles and pairs their half-edges; those on which two triangles still run the same
/// way are torn. Vertices are those of the import.
void orient(int vertexCount, SeamMesh& mesh)
{
    HalfEdges edges = pairHalfEdges(mesh.triangles, vertexCount);
    Sides sides = findSides(mesh.triangles, edges);
    mesh.isTurned = std::move(sides.isTurned);
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t)
        if (mesh.isTurned[t])
            std::swap(mesh.triangles[t][1], mesh.triangles[t][2]);
    mesh.twin = pairHalfEdges(mesh.triangles, vertexCount).twin;
    for (int h = 0; h < static_cast<int>(mesh.twin.size()); ++h) {
        int& twin = mesh.twin[at(h)];
        if (twin >= 0 && mesh.originOf(h) == mesh.originOf(twin)) {
            mesh.torn.push_back(h);
            mesh.twin[at(twin)] = -1;
            twin = -1;
        }
        twin = std::max(twin, -1);
    }
}

/// The outgoing half-edge that is next around the origin, counter-clockwise; -1 past the border.
int nextOutgoing(const SeamMesh& mesh, int h)
{
    return mesh.twin[at(previousHalfEdge(h))];
}

int previousOutgoing(const SeamMesh& mesh, int h)
{
    const int twin = mesh.twin[at(h)];
    return twin < 0 ? -1 : nextHalfEdge(twin);
}

/// Where a walk around the origin of h begins: at the border, or at h itself.
int firstOutgoing(const SeamMesh& mesh, int h)
{
    int first = h;
    for (int g = previousOutgoing(mesh, h); g >= 0 && g != h; g = previousOutgoing(mesh, g))
        first = g;
    return mesh.twin[at(first)] < 0 ? first : h;
}

/// Gives every fan of triangles around a vertex a vertex of its own.
void partFans(SeamMesh& mesh)
{
    std::vector<Triangle> parted(mesh.triangles.size(), {-1, -1, -1});
    for (int h = 0; h < 3 * mesh.triangleCount(); ++h) {
        if (parted[at(h / 3)][at(h % 3)] >= 0)
            continue;
        const int vertex = static_cast<int>(mesh.importedVertex.size());
        const int first = firstOutgoing(mesh, h);
        mesh.importedVertex.push_back(mesh.originOf(h));
        mesh.isOnBorder.push_back(static_cast<char>(mesh.twin[at(first)] < 0));
        int g = first;
        do {
            parted[at(g / 3)][at(g % 3)] = vertex;
            g = nextOutgoing(mesh, g);
        } while (g >= 0 && g != first);
    }
    mesh.triangles = std::move(parted);
}

void numberEdges(SeamMesh& mesh)
{
    mesh.edgeOf.assign(mesh.twin.size(), -1);
    for (int h = 0; h < static_cast<int>(mesh.twin.size()); ++h) {
        const int twin = mesh.twin[at(h)];
        if (twin < h)
            continue;
        mesh.edgeOf[at(h)] = mesh.edgeOf[at(twin)] = mesh.edgeCount();
        mesh.halves.push_back(h);
    }
}

void listSpokes(SeamMesh& mesh)
{
    std::vector<int> vertexOfEnd(2 * mesh.halves.size());
    for (int e = 0; e < mesh.edgeCount(); ++e) {
        const auto [a, b] = mesh.verticesOf(e);
        vertexOfEnd[at(2 * e)] = a;
        vertexOfEnd[at(2 * e + 1)] = b;
    }
    const OffsetArray<int> ends = groupByKey(vertexOfEnd, mesh.vertexCount());
    mesh.spokes.offsets = ends.offsets;
    mesh.spokes.flat.reserve(ends.flat.size());
    for (const int end : ends.flat)
        mesh.spokes.flat.push_back({end / 2, vertexOfEnd[at(end ^ 1)]});
}

void takePositions(const ImportedMesh& imported, SeamMesh& mesh)
{
    if (mesh.importedVertex.empty())
        return;
    Vec3 low = imported.positions[at(mesh.importedVertex.front())];
    Vec3 high = low;
    for (const int v : mesh.importedVertex) {
        const Vec3 p = imported.positions[at(v)];
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    // By the box first: squares of huge numbers overflow.
    const Vec3 box = high - low;
    const double side = std::max({box.x, box.y, box.z});
    const double shrink = side > 0.0 ? 1.0 / side : 1.0;
    const Vec3 boxMiddle = low + 0.5 * box;
    mesh.positions.reserve(mesh.importedVertex.size());
    for (const int v : mesh.importedVertex)
        mesh.positions.push_back(shrink * (imported.positions[at(v)] - boxMiddle));
    std::vector<int> all(mesh.triangles.size());
    std::iota(all.begin(), all.end(), 0);
    const SurfaceExtent extent = extentOf(mesh.positions, mesh.triangles, all);
    const double scale = extent.size > 0.0 ? 1.0 / extent.size : 1.0;
    for (Vec3& p : mesh.positions)
        p = scale * (p - extent.middle);
}

template <class T>
std::vector<T> inOrder(const std::vector<T>& items, std::span<const int> itemAt)
{
    std::vector<T> ordered;
    ordered.reserve(itemAt.size());
    for (const int item : itemAt)
        ordered.push_back(items[at(item)]);
    return ordered;
}

/// Numbers vertices and triangles anew.
void putInOrder(SeamMesh& mesh, const RunControl& control)
{
    CanonicalOrder order =
        canonicalOrder(mesh.positions, mesh.isOnBorder, mesh.triangles, mesh.twin, control);
    control.checkpoint();
    std::vector<int> vertexAt(mesh.positions.size());
    for (std::size_t v = 0; v < vertexAt.size(); ++v)
        vertexAt[at(order.placeOf[v])] = static_cast<int>(v);
    std::vector<int> newHalf(mesh.twin.size());
    std::vector<Triangle> triangles;
    triangles.reserve(mesh.triangles.size());
    for (int t = 0; t < mesh.triangleCount(); ++t) {
        Triangle& ordered = triangles.emplace_back();
        for (int i = 0; i < 3; ++i) {
            const int h = 3 * order.triangleAt[at(t)] + (order.firstCorner[at(t)] + i) % 3;
            ordered[at(i)] = order.placeOf[at(mesh.originOf(h))];
            newHalf[at(h)] = 3 * t + i;
        }
    }
    std::vector<int> twin(mesh.twin.size());
    for (std::size_t h = 0; h < twin.size(); ++h)
        twin[at(newHalf[h])] = mesh.twin[h] < 0 ? -1 : newHalf[at(mesh.twin[h])];
    for (int& h : mesh.torn)
        h = newHalf[at(h)];
    std::sort(mesh.torn.begin(), mesh.torn.end());
    mesh.triangles = std::move(triangles);
    mesh.twin = std::move(twin);
    mesh.firstCorner = std::move(order.firstCorner);
    mesh.importedTriangle = inOrder(mesh.importedTriangle, order.triangleAt);
    mesh.isTurned = inOrder(mesh.isTurned, order.triangleAt);
    mesh.importedVertex = inOrder(mesh.importedVertex, vertexAt);
    mesh.isOnBorder = inOrder(mesh.isOnBorder, vertexAt);
    mesh.positions = inOrder(mesh.positions, vertexAt);
}

/// The half-edge of a triangle that is longest.
int longestSide(const SeamMesh& mesh, int t)
{
    int longest = 3 * t;
    double most = -1.0;
    for (int h = 3 * t; h < 3 * t + 3; ++h) {
        const double side =
            length(mesh.positions[at(mesh.targetOf(h))] - mesh.positions[at(mesh.originOf(h))]);
        if (side > most) {
            most = side;
            longest = h;
        }
    }
    return longest;
}

/// Lets thin triangles take the normal from across their longest sides, through chains of thin
/// triangles, and where that leads nowhere across any side.
void borrowNormals(const std::vector<int>& thin, SeamMesh& mesh, std::vector<char>& hasNormal)
{
    const auto borrow = [&](int t, int h) {
        const int twin = mesh.twin[at(h)];
        if (hasNormal[at(t)] || twin < 0 || !hasNormal[at(twin / 3)])
            return false;
        mesh.normals[at(t)] = mesh.normals[at(twin / 3)];
        hasNormal[at(t)] = 1;
        return true;
    };
    constexpr int maxRounds = 8;
    for (const bool anySide : {false, true})
        for (int round = 0; round < maxRounds; ++round) {
            bool borrowed = false;
            for (const int t : thin) {
                if (anySide)
                    for (int h = 3 * t; h < 3 * t + 3; ++h)
                        borrowed = borrow(t, h) || borrowed;
                else
                    borrowed = borrow(t, longestSide(mesh, t)) || borrowed;
            }
            if (!borrowed)
                break;
        }
}

void measureTriangles(SeamMesh& mesh)
{
    std::vector<char> hasNormal(mesh.triangles.size(), 1);
    std::vector<int> thin;
    mesh.normals.resize(mesh.triangles.size());
    mesh.areas.resize(mesh.triangles.size());
    for (int t = 0; t < mesh.triangleCount(); ++t) {
        const auto& [a, b, c] = mesh.triangles[at(t)];
        const Vec3 normal = cross(mesh.positions[at(b)] - mesh.positions[at(a)],
                                  mesh.positions[at(c)] - mesh.positions[at(a)]);
        const double doubled = length(normal);
        mesh.areas[at(t)] = 0.5 * doubled;
        const int h = longestSide(mesh, t);
        const double side =
            length(mesh.positions[at(mesh.targetOf(h))] - mesh.positions[at(mesh.originOf(h))]);
        if (doubled > noNormalHeight * side) {
            mesh.normals[at(t)] = (1.0 / doubled) * normal;
        } else {
            hasNormal[at(t)] = 0;
            thin.push_back(t);
        }
    }
    borrowNormals(thin, mesh, hasNormal);
}

void measureEdges(SeamMesh& mesh)
{
    mesh.lengths.reserve(mesh.halves.size());
    mesh.angles.reserve(mesh.halves.size());
    for (int e = 0; e < mesh.edgeCount(); ++e) {
        const auto [from, to] = mesh.verticesOf(e);
        const Vec3 along = mesh.positions[at(to)] - mesh.positions[at(from)];
        const auto [left, right] = mesh.trianglesOf(e);
        const Vec3 m = mesh.normals[at(left)];
        const Vec3 n = mesh.normals[at(right)];
        const Vec3 turn = cross(m, n);
        const double angle = std::atan2(length(turn), dot(m, n));
        mesh.lengths.push_back(length(along));
        mesh.angles.push_back(dot(turn, along) < 0.0 ? -angle : angle);
    }
}

} // namespace

SeamMesh makeSeamMesh(const ImportedMesh& imported, const RunControl& control)
{
    SeamMesh mesh;
    takeSoundTriangles(imported, mesh);
    orient(imported.vertexCount(), mesh);
    control.checkpoint();
    partFans(mesh);
    control.checkpoint();
    takePositions(imported, mesh);
    control.checkpoint();
    putInOrder(mesh, control);
    control.checkpoint();
    numberEdges(mesh);
    control.checkpoint();
    listSpokes(mesh);
    control.checkpoint();
    measureTriangles(mesh);
    control.checkpoint();
    measureEdges(mesh);
    control.checkpoint();
    return mesh;
}

double cornerAngle(const SeamMesh& mesh, int h)
{
    const Vec3 p = mesh.positions[at(mesh.originOf(h))];
    const Vec3 a = mesh.positions[at(mesh.targetOf(h))] - p;
    const Vec3 b = mesh.positions[at(mesh.originOf(previousHalfEdge(h)))] - p;
    return std::atan2(length(cross(a, b)), dot(a, b));
}

} // namespace unfold3d

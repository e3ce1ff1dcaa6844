#include "Unfold3D/start/FilledDisk.h"

#include "Unfold3D/mesh/HalfEdges.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace unfold3d
{

namespace
{

/// Loops whose lengths differ by less than this share are equally long, and coordinates that differ
/// by less, in an island of unit area, are the same: another numbering of the mesh sums in another
/// order.
constexpr double sameUpToRounding = 1e-9;

Vec3 positionOf(const IslandMesh& mesh, int v)
{
    return mesh.positions[static_cast<std::size_t>(v)];
}

std::vector<int> verticesOf(const IslandMesh& mesh, std::span<const int> loop)
{
    std::vector<int> vertices;
    vertices.reserve(loop.size());
    for (const int h : loop)
        vertices.push_back(originOf(mesh.triangles, h));
    return vertices;
}

std::vector<double> edgeLengths(const IslandMesh& mesh, std::span<const int> vertices)
{
    std::vector<double> lengths(vertices.size());
    for (std::size_t i = 0; i < vertices.size(); ++i)
        lengths[i] = length(positionOf(mesh, vertices[(i + 1) % vertices.size()]) -
                            positionOf(mesh, vertices[i]));
    return lengths;
}

struct LoopExtent
{
    double length = 0.0;
    Vec3 middle;
};

LoopExtent measureLoop(const IslandMesh& mesh, std::span<const int> loop)
{
    const std::vector<int> vertices = verticesOf(mesh, loop);
    LoopExtent extent;
    for (const double edge : edgeLengths(mesh, vertices))
        extent.length += edge;
    for (const int v : vertices)
        extent.middle = extent.middle + positionOf(mesh, v);
    extent.middle = (1.0 / static_cast<double>(vertices.size())) * extent.middle;
    return extent;
}

bool isRatherOuter(const LoopExtent& a, const LoopExtent& b)
{
    if (std::abs(a.length - b.length) > sameUpToRounding * std::max(a.length, b.length))
        return a.length > b.length;
    const auto differ = [](double p, double q) { return std::abs(p - q) > sameUpToRounding; };
    if (differ(a.middle.x, b.middle.x))
        return a.middle.x < b.middle.x;
    if (differ(a.middle.y, b.middle.y))
        return a.middle.y < b.middle.y;
    return differ(a.middle.z, b.middle.z) && a.middle.z < b.middle.z;
}

int findOuterLoop(const IslandMesh& mesh, const OffsetArray<int>& loops)
{
    int outer = 0;
    LoopExtent best = measureLoop(mesh, loops[0]);
    for (int i = 1; i < loops.size(); ++i) {
        const LoopExtent extent = measureLoop(mesh, loops[i]);
        if (!isRatherOuter(extent, best))
            continue;
        outer = i;
        best = extent;
    }
    return outer;
}

bool visitsAVertexTwice(std::vector<int> loop)
{
    std::sort(loop.begin(), loop.end());
    return std::adjacent_find(loop.begin(), loop.end()) != loop.end();
}

/// Lays a ring of new vertices along the right side of a loop, one for each visit of a vertex. The
/// ring is a loop again, with the same right side, but visits no vertex twice. Adds the triangles
/// between the two.
///
///      v0 -->-- v1          the loop; the island lies above
///       |     .  |
///      r0 ----- r1          new
std::vector<int> addRing(std::span<const int> loop, int& vertexCount,
                         std::vector<Triangle>& triangles)
{
    std::vector<int> ring(loop.size());
    for (int& vertex : ring)
        vertex = vertexCount++;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        const std::size_t next = (i + 1) % loop.size();
        triangles.push_back({loop[next], loop[i], ring[i]});
        triangles.push_back({loop[next], ring[i], ring[next]});
    }
    return ring;
}

/// Fills a hole by triangles around a new vertex in its middle, with a ring between where the loop
/// passes a vertex twice.
void fillHole(IslandMesh& mesh, std::vector<int> loop)
{
    constexpr double ringShare = 0.2; // of the way to the middle
    Vec3 middle;
    for (const int v : loop)
        middle = middle + positionOf(mesh, v);
    middle = (1.0 / static_cast<double>(loop.size())) * middle;

    if (visitsAVertexTwice(loop)) {
        for (const int v : loop)
            mesh.positions.push_back((1.0 - ringShare) * positionOf(mesh, v) + ringShare * middle);
        int vertexCount = mesh.vertexCount() - static_cast<int>(loop.size());
        loop = addRing(loop, vertexCount, mesh.triangles);
    }
    const int centre = mesh.vertexCount();
    mesh.positions.push_back(middle);
    for (std::size_t i = 0; i < loop.size(); ++i)
        mesh.triangles.push_back({loop[(i + 1) % loop.size()], loop[i], centre});
}

} // namespace

FilledDisk fillToDisk(const IslandMesh& mesh, const OffsetArray<int>& loops)
{
    FilledDisk disk;
    disk.filled = mesh;
    const int outer = findOuterLoop(mesh, loops);
    for (int i = 0; i < loops.size(); ++i)
        if (i != outer)
            fillHole(disk.filled, verticesOf(mesh, loops[i]));

    disk.vertexCount = disk.filled.vertexCount();
    disk.triangles = disk.filled.triangles;
    disk.outline = verticesOf(mesh, loops[outer]);
    disk.outlineLengths = edgeLengths(mesh, disk.outline);
    if (visitsAVertexTwice(disk.outline))
        disk.outline = addRing(disk.outline, disk.vertexCount, disk.triangles);
    return disk;
}

} // namespace unfold3d

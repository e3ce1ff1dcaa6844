#include "mesh/SheetSeparation.h"

#include "mesh/DisjointSets.h"
#include "mesh/EdgeGroups.h"

#include <algorithm>
#include <array>
#include <span>

namespace uvtool
{
namespace
{

using Sides = std::span<const std::uint32_t>;

/// Looks at the triangles as they are: vertices, directions of sides, third corners.
struct Triangles
{
    std::vector<std::uint32_t>& vertices;

    bool sameDirection(std::uint32_t a, std::uint32_t b) const
    {
        return vertices[a] == vertices[b];
    }
    std::uint32_t apex(std::uint32_t side) const { return vertices[oppositeCorner(side)]; }
};

/// True for two sides whose triangles are neighbours on one sheet: they run in opposite directions
/// and aren't the two faces of one and the same triangle.
bool arePartners(const Triangles& mesh, std::uint32_t a, std::uint32_t b)
{
    return !mesh.sameDirection(a, b) && mesh.apex(a) != mesh.apex(b);
}

bool isRegular(const Triangles& mesh, Sides sides)
{
    return sides.size() == 1 || (sides.size() == 2 && arePartners(mesh, sides[0], sides[1]));
}

/// At an edge with two different apexes, once or several times over, sheets lie upon each other and
/// the partners are clear: the k-th triangle that runs forward to one apex goes with the k-th that
/// runs backward to the other. With a third apex nothing says which two belong together.
void pairSheets(const Triangles& mesh, Sides sides,
                std::vector<std::array<std::uint32_t, 2>>& pairs)
{
    const std::uint32_t first = mesh.apex(sides[0]);
    std::uint32_t second = first;
    for (const std::uint32_t side : sides) {
        const std::uint32_t apex = mesh.apex(side);
        if (apex == first || apex == second)
            continue;
        if (second != first)
            return;
        second = apex;
    }

    std::array<std::array<std::vector<std::uint32_t>, 2>, 2> byApexAndDirection;
    for (const std::uint32_t side : sides) {
        const std::size_t apex = mesh.apex(side) == first ? 0 : 1;
        const std::size_t direction = mesh.sameDirection(side, sides[0]) ? 0 : 1;
        byApexAndDirection[apex][direction].push_back(side);
    }
    for (std::size_t direction = 0; direction < 2; ++direction) {
        const std::vector<std::uint32_t>& one = byApexAndDirection[0][direction];
        const std::vector<std::uint32_t>& other = byApexAndDirection[1][1 - direction];
        for (std::size_t k = 0; k < std::min(one.size(), other.size()); ++k)
            pairs.push_back({one[k], other[k]});
    }
}

/// Joins the corners that two partners share, at the vertices that are to be split.
void joinPartners(const Triangles& mesh, const std::vector<char>& isSplit, std::uint32_t a,
                  std::uint32_t b, DisjointSets& corners)
{
    if (isSplit[mesh.vertices[a]] != 0)
        corners.join(a, endCorner(b));
    if (isSplit[mesh.vertices[b]] != 0)
        corners.join(b, endCorner(a));
}

/// Triangles without sides go with whoever comes first at their vertex.
void joinStrays(const Triangles& mesh, const std::vector<char>& isSplit, std::size_t vertexCount,
                DisjointSets& corners)
{
    std::vector<std::uint32_t> host(vertexCount, 0xFFFFFFFFU);
    const auto eachCorner = [&](bool stray, const auto& visit) {
        for (std::uint32_t c = 0; c < mesh.vertices.size(); ++c) {
            if (isSplit[mesh.vertices[c]] != 0 && repeatsVertex(mesh.vertices, c / 3) == stray)
                visit(c, host[mesh.vertices[c]]);
        }
    };
    const auto takeFirst = [](std::uint32_t corner, std::uint32_t& first) {
        first = std::min(first, corner);
    };
    eachCorner(false, takeFirst);
    eachCorner(true, takeFirst);
    eachCorner(true,
               [&](std::uint32_t corner, std::uint32_t first) { corners.join(corner, first); });
}

/// Gives each set of corners at a split vertex a vertex of its own; the first keeps the old one.
void renumber(const Triangles& mesh, const std::vector<char>& isSplit, std::size_t& vertexCount,
              DisjointSets& corners)
{
    std::vector<char> isTaken(isSplit.size(), 0);
    std::vector<std::uint32_t> vertexOfCorner(mesh.vertices);
    for (std::uint32_t c = 0; c < mesh.vertices.size(); ++c) {
        const std::uint32_t old = mesh.vertices[c];
        if (isSplit[old] == 0)
            continue;
        const std::uint32_t lowest = corners.find(c);
        if (lowest != c)
            vertexOfCorner[c] = vertexOfCorner[lowest];
        else if (isTaken[old] != 0)
            vertexOfCorner[c] = static_cast<std::uint32_t>(vertexCount++);
        else
            isTaken[old] = 1;
    }
    mesh.vertices = std::move(vertexOfCorner);
}

/// Splits the vertices of all edges that aren't regular into the fans around them.
void splitIntoFans(const Triangles& mesh, std::size_t& vertexCount, SheetReport& report)
{
    const EdgeGroups edges(mesh.vertices, vertexCount);
    std::vector<char> isSplit(vertexCount, 0);
    std::vector<std::array<std::uint32_t, 2>> pairs;
    for (std::size_t e = 0; e < edges.size(); ++e) {
        const Sides sides = edges[e];
        if (isRegular(mesh, sides))
            continue;
        ++report.separatedEdges;
        isSplit[mesh.vertices[sides[0]]] = 1;
        isSplit[mesh.vertices[endCorner(sides[0])]] = 1;
        pairSheets(mesh, sides, pairs);
    }
    if (report.separatedEdges == 0)
        return;

    DisjointSets corners(mesh.vertices.size());
    for (const auto& [a, b] : pairs)
        joinPartners(mesh, isSplit, a, b, corners);
    for (std::size_t e = 0; e < edges.size(); ++e) {
        if (edges[e].size() == 2 && isRegular(mesh, edges[e]))
            joinPartners(mesh, isSplit, edges[e][0], edges[e][1], corners);
    }
    joinStrays(mesh, isSplit, vertexCount, corners);
    renumber(mesh, isSplit, vertexCount, corners);
}

/// Sheets that grow together all round both ends of an edge are still one there. Keeps two of the
/// triangles and gives the others vertices of their own; the number of triangles that were cut off.
std::size_t detachRest(const Triangles& mesh, std::size_t& vertexCount)
{
    const EdgeGroups edges(mesh.vertices, vertexCount);
    std::vector<char> isDetached(mesh.vertices.size() / 3, 0);
    for (std::size_t e = 0; e < edges.size(); ++e) {
        const Sides sides = edges[e];
        if (isRegular(mesh, sides))
            continue;
        const auto partner = std::find_if(sides.begin() + 1, sides.end(), [&](std::uint32_t side) {
            return arePartners(mesh, sides[0], side);
        });
        for (auto side = sides.begin() + 1; side != sides.end(); ++side) {
            if (side != partner)
                isDetached[*side / 3] = 1;
        }
    }

    std::size_t detached = 0;
    for (std::size_t t = 0; t < isDetached.size(); ++t) {
        if (isDetached[t] == 0)
            continue;
        ++detached;
        for (std::size_t k = 0; k < 3; ++k)
            mesh.vertices[3 * t + k] = static_cast<std::uint32_t>(vertexCount++);
    }
    return detached;
}

std::size_t countDoubled(const std::vector<std::uint32_t>& triangles)
{
    std::vector<std::array<std::uint32_t, 3>> triples;
    triples.reserve(triangles.size() / 3);
    for (std::size_t t = 0; t < triangles.size() / 3; ++t) {
        if (repeatsVertex(triangles, t))
            continue;
        std::array<std::uint32_t, 3> triple{triangles[3 * t], triangles[3 * t + 1],
                                            triangles[3 * t + 2]};
        std::sort(triple.begin(), triple.end());
        triples.push_back(triple);
    }
    std::sort(triples.begin(), triples.end());
    std::size_t doubled = 0;
    for (std::size_t i = 1; i < triples.size(); ++i)
        doubled += triples[i] == triples[i - 1] ? 1U : 0U;
    return doubled;
}

} // namespace

SheetReport separateSheets(std::vector<std::uint32_t>& triangles, std::size_t& vertexCount)
{
    SheetReport report;
    const Triangles mesh{triangles};
    const std::vector<std::uint32_t> before = triangles;
    splitIntoFans(mesh, vertexCount, report);
    if (report.separatedEdges == 0)
        return report;
    report.doubledTriangles = countDoubled(before);
    // Cutting a triangle off may leave another group that isn't regular any more, never a new one.
    while (const std::size_t detached = detachRest(mesh, vertexCount))
        report.detachedTriangles += detached;
    return report;
}

} // namespace uvtool

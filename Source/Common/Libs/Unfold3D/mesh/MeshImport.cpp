#include "Unfold3D/mesh/MeshImport.h"

#include "Unfold3D/base/SortedBuckets.h"
#include "Unfold3D/mesh/HalfEdges.h"

#include <algorithm>
#include <cmath>
#include <compare>
#include <cstdint>

namespace unfold3d
{

namespace
{

/// Squares and products of three of such numbers stay finite.
constexpr double largestCoordinate = 1e150;

std::string number(std::size_t n)
{
    return std::to_string(n);
}

std::string plural(int n, const char* one, const char* many)
{
    return std::to_string(n) + " " + (n == 1 ? one : many);
}

std::string sizesThatDisagree(const MeshArrays& arrays)
{
    const std::size_t corners = 3 * arrays.polySizes.size();
    for (std::size_t t = 0; t < arrays.polySizes.size(); ++t)
        if (arrays.polySizes[t] != 3)
            return "Polygon " + number(t) + " has " + std::to_string(arrays.polySizes[t]) +
                   " corners. Triangulate the mesh first.";
    if (arrays.polyXYZIds.size() != corners || arrays.polyUVWIds.size() != corners)
        return "The mesh has " + number(arrays.polySizes.size()) + " triangles, but " +
               number(arrays.polyXYZIds.size()) + " corners in space and " +
               number(arrays.polyUVWIds.size()) + " corners in UV.";
    if (arrays.coordsXYZ.size() % 3 != 0 || arrays.coordsUVW.size() % 3 != 0)
        return "The number of coordinates of the mesh is no multiple of three.";
    if (std::max(corners, std::max(arrays.coordsXYZ.size(), arrays.coordsUVW.size())) >
        static_cast<std::size_t>(INT32_MAX))
        return "The mesh is too large.";
    return {};
}

void findIdsOutOfRange(std::span<const int> ids, std::size_t count, const char* what,
                       TopologyLines& lines)
{
    for (std::size_t corner = 0; corner < ids.size(); ++corner)
        if (ids[corner] < 0 || static_cast<std::size_t>(ids[corner]) >= count)
            lines.add("Triangle " + number(corner / 3) + " refers to " + what + " " +
                      std::to_string(ids[corner]) + ", but there are only " + number(count) + ".");
}

void findBadCoordinates(std::span<const double> coords, const char* what, TopologyLines& lines)
{
    for (std::size_t point = 0; point < coords.size() / 3; ++point) {
        const auto isGood = [](double c) { return std::abs(c) <= largestCoordinate; };
        const auto xyz = coords.subspan(3 * point, 3);
        if (!std::all_of(xyz.begin(), xyz.end(), isGood)) // false for NaN as well
            lines.add("The coordinates of " + std::string(what) + " " + number(point) +
                      " are not finite or too large.");
    }
}

/// The point in space of each UV point, -1 for one without a triangle.
std::vector<int> matchPoints(const MeshArrays& arrays, TopologyLines& lines)
{
    std::vector<int> pointOf(arrays.coordsUVW.size() / 3, -1);
    for (std::size_t corner = 0; corner < arrays.polyUVWIds.size(); ++corner) {
        const int uv = arrays.polyUVWIds[corner];
        const int xyz = arrays.polyXYZIds[corner];
        int& known = pointOf[static_cast<std::size_t>(uv)];
        if (known >= 0 && known != xyz)
            lines.add("UV point " + std::to_string(uv) + " stands for vertex " +
                      std::to_string(known) + " and, in triangle " + number(corner / 3) +
                      ", for vertex " + std::to_string(xyz) + ".");
        else
            known = xyz;
    }
    return pointOf;
}

bool refuses(const MeshArrays& arrays, ImportFindings& findings)
{
    findings.error = sizesThatDisagree(arrays);
    if (!findings.error.empty())
        return true;
    findIdsOutOfRange(arrays.polyXYZIds, arrays.coordsXYZ.size() / 3, "vertex", findings.errors3D);
    findIdsOutOfRange(arrays.polyUVWIds, arrays.coordsUVW.size() / 3, "UV point",
                      findings.errorsUV);
    if (!findings.errors3D.empty() || !findings.errorsUV.empty()) {
        findings.error = "Triangles of the mesh refer to vertices that don't exist.";
        return true;
    }
    findBadCoordinates(arrays.coordsXYZ, "vertex", findings.errors3D);
    findBadCoordinates(arrays.coordsUVW, "UV point", findings.errorsUV);
    if (!findings.errors3D.empty() || !findings.errorsUV.empty()) {
        findings.error = "The mesh has coordinates that are not finite numbers.";
        return true;
    }
    return false;
}

bool hasRepeatedCorner(const Triangle& t)
{
    return t[0] == t[1] || t[1] == t[2] || t[2] == t[0];
}

/// Is the triangle a line in space? Coordinates are brought to the size of the triangle first, so
/// that neither 1e-100 nor 1e100 loses its squares.
bool hasNoArea(Vec3 a, Vec3 b, Vec3 c)
{
    const Vec3 sides[3] = {b - a, c - b, a - c};
    double size = 0.0;
    for (const Vec3& s : sides)
        size = std::max({size, std::abs(s.x), std::abs(s.y), std::abs(s.z)});
    if (size <= 0.0)
        return true;
    // By division, since 1 / size of a denormal number is infinite.
    const auto scaled = [size](Vec3 s) { return Vec3{s.x / size, s.y / size, s.z / size}; };
    const Vec3 unit[3] = {scaled(sides[0]), scaled(sides[1]), scaled(sides[2])};
    double longest = 0.0;
    for (const Vec3& s : unit)
        longest = std::max(longest, dot(s, s));
    return length(cross(unit[0], unit[1])) < noAreaHeight * longest;
}

/// For each triangle the first one with the same corners, in whatever order.
std::vector<int> findFirstOfCopies(const ImportedMesh& mesh)
{
    struct Others
    {
        int middle;
        int high;
        int triangle;
        auto operator<=>(const Others&) const = default;
    };
    const auto atLowest = sortedBuckets<Others>(mesh.vertexCount(), [&](const auto& put) {
        for (int t = 0; t < mesh.triangleCount(); ++t) {
            Triangle corners = mesh.triangles[static_cast<std::size_t>(t)];
            std::sort(corners.begin(), corners.end());
            put(corners[0], Others{corners[1], corners[2], t});
        }
    });
    std::vector<int> first(mesh.triangles.size());
    for (int v = 0; v < mesh.vertexCount(); ++v) {
        const Others* before = nullptr;
        for (const Others& own : atLowest[v]) {
            const bool isCopy = before && before->middle == own.middle && before->high == own.high;
            first[static_cast<std::size_t>(own.triangle)] =
                isCopy ? first[static_cast<std::size_t>(before->triangle)] : own.triangle;
            before = &own;
        }
    }
    return first;
}

void classifyTriangles(ImportedMesh& mesh, ImportFindings& findings)
{
    const std::vector<int> firstOfCopies = findFirstOfCopies(mesh);
    int repeated = 0;
    int copies = 0;
    int lines = 0;
    mesh.parts.assign(mesh.triangles.size(), ImportedMesh::Sound);
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
        const Triangle& corner = mesh.triangles[t];
        const auto at = [&](std::size_t i) {
            return mesh.positions[static_cast<std::size_t>(corner[i])];
        };
        if (hasRepeatedCorner(corner)) {
            mesh.parts[t] = ImportedMesh::LeftOut;
            ++repeated;
            findings.badTriangles.add("Triangle " + number(t) + " has one vertex twice.");
        } else if (firstOfCopies[t] != static_cast<int>(t)) {
            mesh.parts[t] = ImportedMesh::LeftOut;
            ++copies;
            findings.badTriangles.add("Triangle " + number(t) + " is a copy of triangle " +
                                      std::to_string(firstOfCopies[t]) + ".");
        } else if (hasNoArea(at(0), at(1), at(2))) {
            mesh.parts[t] = ImportedMesh::NoArea;
            ++lines;
            findings.badTriangles.add("Triangle " + number(t) + " has no area.");
        }
    }
    std::string found;
    const auto add = [&found](int n, const std::string& text) {
        if (n > 0)
            found += (found.empty() ? "" : ", ") + text;
    };
    add(repeated,
        plural(repeated, "triangle with a repeated vertex", "triangles with a repeated vertex"));
    add(copies, plural(copies, "copy of another triangle", "copies of other triangles"));
    add(lines, plural(lines, "triangle without area", "triangles without area"));
    if (!found.empty())
        findings.warning = "The mesh has " + found +
                           ". They do not shape the result; repair the mesh to be rid of them.";
}

/// Names the edges that aren't those of an oriented surface, in the order of their vertices.
void inspectEdges(const ImportedMesh& mesh, ImportFindings& findings, const RunControl& control)
{
    const EdgeSides sides = edgeSides(mesh.triangles, mesh.vertexCount(), [&](int t) {
        return mesh.parts[static_cast<std::size_t>(t)] != ImportedMesh::LeftOut;
    });
    control.checkpoint();
    int crowded = 0;
    int turned = 0;
    forEachEdge(sides, [&](int low, std::span<const EdgeSide> ofEdge) {
        const auto edge = [&] {
            return "The edge of vertices " + std::to_string(low) + " and " +
                   std::to_string(ofEdge[0].high);
        };
        if (ofEdge.size() > 2) {
            ++crowded;
            findings.badEdges.add(edge() + " has " + number(ofEdge.size()) + " triangles.");
        } else if (ofEdge.size() == 2 && originOf(mesh.triangles, ofEdge[0].halfEdge) ==
                                             originOf(mesh.triangles, ofEdge[1].halfEdge))
        {
            ++turned;
            findings.badEdges.add(
                edge() + " joins triangles " + std::to_string(ofEdge[0].halfEdge / 3) + " and " +
                std::to_string(ofEdge[1].halfEdge / 3) + ", which face opposite sides.");
        }
    });
    const auto append = [&findings](const std::string& text) {
        findings.warning += (findings.warning.empty() ? "" : "\n") + text;
    };
    if (crowded > 0)
        append("The mesh has " + plural(crowded, "edge", "edges") +
               " with more than two triangles. The islands with them can't be unfolded; cut the "
               "mesh along them first.");
    if (turned > 0)
        append("The mesh has " + plural(turned, "edge", "edges") +
               " whose triangles face opposite sides. Where it can be done they are unfolded as if "
               "they faced one side.");
}

} // namespace

ImportedMesh importMesh(const MeshArrays& arrays, ImportFindings& findings,
                        const RunControl& control)
{
    ImportedMesh mesh;
    if (refuses(arrays, findings))
        return mesh;
    control.checkpoint();
    const std::vector<int> pointOf = matchPoints(arrays, findings.errorsUV);
    if (!findings.errorsUV.empty()) {
        findings.error = "UV points of the mesh stand for more than one vertex. Each UV point must "
                         "belong to one vertex.";
        return mesh;
    }
    control.checkpoint();

    mesh.positions.reserve(pointOf.size());
    for (const int point : pointOf) {
        const std::size_t at = 3 * static_cast<std::size_t>(std::max(point, 0));
        mesh.positions.push_back(point < 0 ? Vec3{}
                                           : Vec3{arrays.coordsXYZ[at], arrays.coordsXYZ[at + 1],
                                                  arrays.coordsXYZ[at + 2]});
    }
    mesh.triangles.reserve(arrays.polySizes.size());
    for (std::size_t t = 0; t < arrays.polySizes.size(); ++t)
        mesh.triangles.push_back(
            {arrays.polyUVWIds[3 * t], arrays.polyUVWIds[3 * t + 1], arrays.polyUVWIds[3 * t + 2]});
    control.checkpoint();
    classifyTriangles(mesh, findings);
    control.checkpoint();
    inspectEdges(mesh, findings, control);
    return mesh;
}

} // namespace unfold3d

#include "LayoutChecks.h"

#include "Unfold3D/base/ExactPredicates.h"

#include <algorithm>
#include <array>
#include <map>

using unfold3d::orient2d;
using unfold3d::Triangle;
using unfold3d::Vec2;

namespace layout
{

namespace
{

Vec2 at(std::span<const Vec2> uv, int v)
{
    return uv[static_cast<std::size_t>(v)];
}

bool meet(Vec2 a, Vec2 b, Vec2 c, Vec2 d)
{
    const int abc = orient2d(a, b, c);
    const int abd = orient2d(a, b, d);
    const int cda = orient2d(c, d, a);
    const int cdb = orient2d(c, d, b);
    if (abc == 0 && abd == 0) { // on one line
        const auto overlap = [](double p, double q, double r, double s) {
            return std::max(std::min(p, q), std::min(r, s)) <=
                   std::min(std::max(p, q), std::max(r, s));
        };
        return overlap(a.x, b.x, c.x, d.x) && overlap(a.y, b.y, c.y, d.y);
    }
    return abc * abd <= 0 && cda * cdb <= 0;
}

std::vector<std::array<int, 2>> borderEdges(const std::vector<Triangle>& triangles)
{
    std::map<std::array<int, 2>, int> uses;
    for (const Triangle& t : triangles)
        for (std::size_t i = 0; i < 3; ++i) {
            const auto [low, high] = std::minmax(t[i], t[(i + 1) % 3]);
            ++uses[{low, high}];
        }
    std::vector<std::array<int, 2>> border;
    for (const auto& [edge, count] : uses)
        if (count == 1)
            border.push_back(edge);
    return border;
}

} // namespace

int countFlips(const std::vector<Triangle>& triangles, std::span<const Vec2> uv)
{
    return static_cast<int>(std::count_if(triangles.begin(), triangles.end(), [&](const auto& t) {
        return orient2d(at(uv, t[0]), at(uv, t[1]), at(uv, t[2])) <= 0;
    }));
}

int countCrossings(const std::vector<Triangle>& triangles, std::span<const Vec2> uv)
{
    const auto border = borderEdges(triangles);
    int crossings = 0;
    for (std::size_t i = 0; i < border.size(); ++i)
        for (std::size_t j = 0; j < i; ++j) {
            const auto [a, b] = border[i];
            const auto [c, d] = border[j];
            if (a == c || a == d || b == c || b == d)
                continue;
            crossings += meet(at(uv, a), at(uv, b), at(uv, c), at(uv, d));
        }
    return crossings;
}

int countOverlaps(const std::vector<Triangle>& triangles, std::span<const Vec2> uv)
{
    const auto place = [&](int vertex) { return uv[static_cast<std::size_t>(vertex)]; };
    // Convex shapes are apart when an edge of one has all of the other on its outer side.
    const auto hasSeparatingEdge = [&](const Triangle& s, const Triangle& t) {
        for (std::size_t i = 0; i < 3; ++i)
            if (std::all_of(t.begin(), t.end(), [&](int v) {
                    return orient2d(place(s[i]), place(s[(i + 1) % 3]), place(v)) <= 0;
                }))
                return true;
        return false;
    };
    int count = 0;
    for (std::size_t i = 0; i < triangles.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            count += !hasSeparatingEdge(triangles[i], triangles[j]) &&
                     !hasSeparatingEdge(triangles[j], triangles[i]);
    return count;
}

double areaOf(const unfold3d::IslandMesh& mesh)
{
    double area = 0.0;
    for (const Triangle& t : mesh.triangles) {
        const auto p = [&](std::size_t i) {
            return mesh.positions[static_cast<std::size_t>(t[i])];
        };
        area += 0.5 * length(cross(p(1) - p(0), p(2) - p(0)));
    }
    return area;
}

} // namespace layout

#include "PackChecks.h"

#include "Unfold3D/base/ExactPredicates.h"
#include "Unfold3D/packing/Turned.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>

using unfold3d::dot;
using unfold3d::orient2d;
using unfold3d::Triangle;

namespace packed
{

namespace
{

using Corners = std::array<Vec2, 3>;

Corners cornersOf(const patchwork::Layout& layout, std::span<const Vec2> uvs, std::size_t t)
{
    const Triangle& triangle = layout.mesh.triangles[t];
    return {uvs[static_cast<std::size_t>(triangle[0])], uvs[static_cast<std::size_t>(triangle[1])],
            uvs[static_cast<std::size_t>(triangle[2])]};
}

double distance(Vec2 p, Vec2 a, Vec2 b)
{
    const Vec2 along = b - a;
    const double squared = dot(along, along);
    const double share = squared > 0.0 ? std::clamp(dot(p - a, along) / squared, 0.0, 1.0) : 0.0;
    return length(p - a - share * along);
}

bool cross(Vec2 a, Vec2 b, Vec2 c, Vec2 d)
{
    return orient2d(a, b, c) * orient2d(a, b, d) < 0 && orient2d(c, d, a) * orient2d(c, d, b) < 0;
}

bool isInside(Vec2 p, const Corners& t)
{
    const int whole = orient2d(t[0], t[1], t[2]);
    return whole != 0 && orient2d(t[0], t[1], p) != -whole && orient2d(t[1], t[2], p) != -whole &&
           orient2d(t[2], t[0], p) != -whole;
}

double distance(const Corners& s, const Corners& t)
{
    if (isInside(s[0], t) || isInside(t[0], s))
        return 0.0;
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            least = std::min(least, packed::distance(s[i], s[(i + 1) % 3], t[j], t[(j + 1) % 3]));
    return least;
}

double area(const Corners& t)
{
    return 0.5 * std::abs(unfold3d::doubleArea(t[0], t[1], t[2]));
}

/// The quotient of two complex numbers.
Vec2 quotient(Vec2 a, Vec2 b)
{
    const double squared = dot(b, b);
    return {dot(a, b) / squared, unfold3d::cross(b, a) / squared};
}

} // namespace

double distance(Vec2 a, Vec2 b, Vec2 c, Vec2 d)
{
    if (cross(a, b, c, d))
        return 0.0;
    return std::min({distance(a, c, d), distance(b, c, d), distance(c, a, b), distance(d, a, b)});
}

std::vector<unfold3d::OutlineEdge> outlineOf(const patchwork::Patch& patch)
{
    std::vector<int> triangles(patch.triangles.size());
    std::iota(triangles.begin(), triangles.end(), 0);
    std::vector<int> vertices(patch.uvs.size());
    std::iota(vertices.begin(), vertices.end(), 0);
    return islandOutline(patch.uvs, patch.triangles, triangles, vertices);
}

double leastGap(const patchwork::Layout& layout, std::span<const Vec2> uvs)
{
    struct Item
    {
        Corners corners;
        Box2 box;
        int patch;
    };
    std::vector<Item> items;
    for (std::size_t t = 0; t < layout.mesh.triangles.size(); ++t) {
        items.push_back({cornersOf(layout, uvs, t), {}, layout.patchOfTriangle[t]});
        for (const Vec2 corner : items.back().corners)
            items.back().box.add(corner);
    }
    std::sort(items.begin(), items.end(),
              [](const Item& a, const Item& b) { return a.box.low.x < b.box.low.x; });

    // From left to right: what begins farther to the right than the least gap so far can't be
    // nearer.
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t s = 0; s < items.size(); ++s)
        for (std::size_t t = s + 1;
             t < items.size() && items[t].box.low.x - items[s].box.high.x <= least; ++t)
        {
            const double above = std::max(items[t].box.low.y - items[s].box.high.y,
                                          items[s].box.low.y - items[t].box.high.y);
            if (items[s].patch != items[t].patch && above <= least)
                least = std::min(least, distance(items[s].corners, items[t].corners));
        }
    return least;
}

Box2 bounds(std::span<const Vec2> uvs)
{
    Box2 box;
    for (const Vec2 uv : uvs)
        box.add(uv);
    return box;
}

Box2 boundsOfPatch(const patchwork::Layout& layout, std::span<const Vec2> uvs, int patch)
{
    Box2 box;
    for (std::size_t v = 0; v < uvs.size(); ++v)
        if (layout.patchOfVertex[v] == patch)
            box.add(uvs[v]);
    return box;
}

double areaInUV(const patchwork::Layout& layout, std::span<const Vec2> uvs, int patch)
{
    double sum = 0.0;
    for (std::size_t t = 0; t < layout.mesh.triangles.size(); ++t)
        if (layout.patchOfTriangle[t] == patch)
            sum += area(cornersOf(layout, uvs, t));
    return sum;
}

double areaInSpace(const patchwork::Layout& layout, int patch)
{
    std::vector<Vec2> flat;
    flat.reserve(layout.mesh.positions.size());
    for (const unfold3d::Vec3& p : layout.mesh.positions)
        flat.push_back({p.x, p.y});
    return areaInUV(layout, flat, patch);
}

double wholeArea(const patchwork::Layout& layout, std::span<const Vec2> uvs)
{
    double sum = 0.0;
    for (int patch = 0; patch < layout.patchCount; ++patch)
        sum += areaInUV(layout, uvs, patch);
    return sum;
}

bool areSimilar(const patchwork::Layout& layout, std::span<const Vec2> before,
                std::span<const Vec2> after, double tolerance)
{
    for (int patch = 0; patch < layout.patchCount; ++patch) {
        // Seen from one vertex of the patch, the farthest other one tells the turn and the scale.
        const auto first =
            std::find(layout.patchOfVertex.begin(), layout.patchOfVertex.end(), patch);
        const auto a = static_cast<std::size_t>(first - layout.patchOfVertex.begin());
        std::size_t b = a;
        for (std::size_t v = a; v < before.size(); ++v)
            if (layout.patchOfVertex[v] == patch &&
                length(before[v] - before[a]) > length(before[b] - before[a]))
                b = v;
        if (before[a] == before[b])
            continue;
        const Vec2 turn = quotient(after[b] - after[a], before[b] - before[a]);
        for (std::size_t v = 0; v < before.size(); ++v)
            if (layout.patchOfVertex[v] == patch) {
                const Vec2 expected = after[a] + unfold3d::turned(before[v] - before[a], turn);
                if (length(after[v] - expected) > tolerance * length(after[b] - after[a]))
                    return false;
            }
    }
    return true;
}

std::vector<Vec2> asFloats(std::span<const Vec2> uvs)
{
    std::vector<Vec2> rounded;
    for (const Vec2 uv : uvs)
        rounded.push_back({static_cast<double>(static_cast<float>(uv.x)),
                           static_cast<double>(static_cast<float>(uv.y))});
    return rounded;
}

} // namespace packed

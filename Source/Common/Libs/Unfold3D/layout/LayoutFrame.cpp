#include "Unfold3D/layout/LayoutFrame.h"

#include "Unfold3D/base/RestTriangle.h"
#include "Unfold3D/layout/Placement.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// Least share of the surface that speaks for the scale of the whole.
constexpr double tellingShare = 0.01;
/// A layout is a tangle when folds leave less than this share of the sizes of its triangles.
constexpr double shareOfTangle = 0.5;
/// A tangle has the area of its triangles, but not more than this many times its box: it may be
/// folded once, as symmetric islands are whose halves lie on each other.
constexpr double boxesOfTangle = 2.0;

/// Signed area of the layout for each area of the surface, over triangles all of whose corners are
/// fixed; 0 when they don't tell.
double scaleOfFixed(const IslandMesh& mesh, std::span<const Vec2> uv, std::span<const char> isFixed)
{
    double flat = 0.0;
    double rest = 0.0;
    for (int t = 0; t < mesh.triangleCount() && !isFixed.empty(); ++t) {
        const auto& [a, b, c] = mesh.triangles[static_cast<std::size_t>(t)];
        const auto ia = static_cast<std::size_t>(a);
        const auto ib = static_cast<std::size_t>(b);
        const auto ic = static_cast<std::size_t>(c);
        if (!isFixed[ia] || !isFixed[ib] || !isFixed[ic])
            continue;
        flat += 0.5 * doubleArea(uv[ia], uv[ib], uv[ic]);
        rest += restTriangle(mesh, t).area();
    }
    return rest > tellingShare ? flat / rest : 0.0;
}

} // namespace

LayoutArea layoutArea(std::span<const Triangle> triangles, std::span<const Vec2> uv)
{
    LayoutArea area;
    for (const auto& [a, b, c] : triangles) {
        const double own =
            0.5 * doubleArea(uv[static_cast<std::size_t>(a)], uv[static_cast<std::size_t>(b)],
                             uv[static_cast<std::size_t>(c)]);
        area.signedSum += own;
        area.sizes += std::abs(own);
    }
    return area;
}

bool isMirrored(const IslandMesh& mesh, std::span<const Vec2> uv, std::span<const char> isFixed)
{
    const LayoutArea area = layoutArea(mesh.triangles, uv);
    const bool isTangle = std::abs(area.signedSum) < shareOfTangle * area.sizes;
    const double ofFixed = isTangle ? scaleOfFixed(mesh, uv, isFixed) : 0.0;
    return (ofFixed != 0.0 ? ofFixed : area.signedSum) < 0.0;
}

LayoutFrame frameOf(const IslandMesh& mesh, std::span<const Vec2> uv, std::span<const char> isFixed,
                    double fallback)
{
    const Box2 box = boxAround(uv);
    const double side = std::max(box.width(), box.height());
    LayoutFrame frame{box.centre(), side};
    if (!(side > 0.0)) {
        frame.scale = fallback;
        return frame;
    }
    // In a box of side 1 no product of very large or small coordinates goes wrong.
    std::vector<Vec2> inBox(uv.begin(), uv.end());
    for (Vec2& p : inBox)
        p = frame.inside(p);
    double area = scaleOfFixed(mesh, inBox, isFixed);
    if (!(area > 0.0)) {
        const LayoutArea whole = layoutArea(mesh.triangles, inBox);
        const double ofBox = box.width() / side * (box.height() / side);
        area = whole.signedSum;
        if (area < shareOfTangle * whole.sizes)
            area = std::max(area, std::min(whole.sizes, boxesOfTangle * ofBox));
    }
    if (area > 0.0)
        frame.scale *= std::sqrt(area);
    return frame;
}

} // namespace unfold3d

#include "Unfold3D/seams/FitPieces.h"

#include <cmath>
#include <numeric>
#include <utility>

namespace unfold3d
{

namespace
{

/// Points and where they should come to lie.
using PointPairs = std::vector<std::pair<Vec2, Vec2>>;

PointPairs endsOf(const SeamMesh& mesh, std::span<const int> edges, const PatchLayout& arm,
                  const PatchLayout& centre)
{
    PointPairs pairs;
    for (const int edge : edges) {
        auto [h, g] = mesh.halvesOf(edge);
        if (arm.triangles[std::min(arm.placeOf(h / 3), arm.triangles.size() - 1)] != h / 3)
            std::swap(h, g);
        pairs.emplace_back(arm.originOf(h), centre.originOf(nextHalfEdge(g)));
        pairs.emplace_back(arm.originOf(nextHalfEdge(h)), centre.originOf(g));
    }
    return pairs;
}

/// x -> turn x + shift, with the turn as a complex number.
struct RigidMotion
{
    Vec2 turn{1.0, 0.0};
    Vec2 shift;

    Vec2 operator()(Vec2 p) const
    {
        return Vec2{turn.x * p.x - turn.y * p.y, turn.y * p.x + turn.x * p.y} + shift;
    }
};

/// Least squares (Kabsch 1976, in the plane).
RigidMotion bestMotion(const PointPairs& pairs)
{
    Vec2 from;
    Vec2 to;
    for (const auto& [p, q] : pairs) {
        from += p;
        to += q;
    }
    const double share = 1.0 / static_cast<double>(pairs.size());
    from = share * from;
    to = share * to;
    Vec2 sum;
    for (const auto& [p, q] : pairs)
        sum += Vec2{dot(p - from, q - to), cross(p - from, q - to)};
    RigidMotion motion;
    if (const double size = length(sum); size > 0.0)
        motion.turn = (1.0 / size) * sum;
    motion.shift = to - motion(from);
    return motion;
}

} // namespace

void addFitted(const SeamMesh& mesh, std::span<const int> edges, const PatchLayout& centre,
               const PatchLayout& arm, PatchLayout& whole)
{
    const RigidMotion motion = bestMotion(endsOf(mesh, edges, arm, centre));
    whole.triangles.insert(whole.triangles.end(), arm.triangles.begin(), arm.triangles.end());
    for (const CornerUVs& uv : arm.corners)
        whole.corners.push_back({motion(uv[0]), motion(uv[1]), motion(uv[2])});
}

void sortTriangles(PatchLayout& piece)
{
    std::vector<std::size_t> order(piece.triangles.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return piece.triangles[a] < piece.triangles[b];
    });
    PatchLayout sorted = piece;
    for (std::size_t i = 0; i < order.size(); ++i) {
        sorted.triangles[i] = piece.triangles[order[i]];
        sorted.corners[i] = piece.corners[order[i]];
    }
    piece = std::move(sorted);
}

} // namespace unfold3d

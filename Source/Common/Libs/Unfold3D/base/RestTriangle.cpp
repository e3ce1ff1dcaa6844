#include "Unfold3D/base/RestTriangle.h"

#include <algorithm>

namespace unfold3d
{

namespace
{

/// A triangle seen from its longest edge: the length of that edge, where the foot of the height
/// stands on it as a share of the edge, and the height.
struct LongestEdgeFrame
{
    int apex; ///< corner opposite the edge
    double edge;
    double foot;
    double height;
};

LongestEdgeFrame frameOf(const Vec3 (&p)[3])
{
    int apex = 0;
    double longest = -1.0;
    for (int i = 0; i < 3; ++i) {
        const double edge = length(p[(i + 2) % 3] - p[(i + 1) % 3]);
        if (edge > longest) {
            longest = edge;
            apex = i;
        }
    }
    if (longest <= 0.0)
        return {apex, 0.0, 0.5, 0.0};
    const Vec3 along = p[(apex + 2) % 3] - p[(apex + 1) % 3];
    const Vec3 side = p[apex] - p[(apex + 1) % 3];
    return {apex, longest, std::clamp(dot(side, along) / (longest * longest), 0.0, 1.0),
            length(cross(along, side)) / longest};
}

} // namespace

RestTriangle restTriangle(Vec3 a, Vec3 b, Vec3 c, double meanEdge)
{
    const Vec3 corners[3] = {a, b, c};
    LongestEdgeFrame frame = frameOf(corners);
    frame.edge = std::max(frame.edge, minRestEdge * meanEdge);
    frame.height = std::max(frame.height, minRestHeight * frame.edge);

    Vec2 flat[3];
    flat[(frame.apex + 1) % 3] = {0.0, 0.0};
    flat[(frame.apex + 2) % 3] = {frame.edge, 0.0};
    flat[frame.apex] = {frame.foot * frame.edge, frame.height};

    const Vec2 ab = flat[1] - flat[0];
    const Vec2 ac = flat[2] - flat[0];
    const double bx = length(ab);
    return {bx, dot(ab, ac) / bx, cross(ab, ac) / bx};
}

RestTriangle restTriangle(const IslandMesh& mesh, int t)
{
    const Triangle& corner = mesh.triangles[static_cast<std::size_t>(t)];
    const auto at = [&](int i) {
        return mesh.positions[static_cast<std::size_t>(corner[static_cast<std::size_t>(i)])];
    };
    // The area of the island is 1, so this is the side of a square of a triangle's mean area.
    const double meanEdge = 1.0 / std::sqrt(static_cast<double>(mesh.triangleCount()));
    return restTriangle(at(0), at(1), at(2), meanEdge);
}

} // namespace unfold3d

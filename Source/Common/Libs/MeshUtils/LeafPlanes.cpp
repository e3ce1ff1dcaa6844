#include "MeshUtils/LeafPlanes.h"

namespace
{

/// Below this the square of the sine at a corner leaves too little of a normal.
constexpr double FlatSine = 0x1p-40;
/// Below this the square of an edge leaves too little of a float.
constexpr float ShortEdge = 1e-30F;

/// Four vectors.
struct Vectors
{
    Lanes x = {};
    Lanes y = {};
    Lanes z = {};

    void set(int lane, float vx, float vy, float vz)
    {
        x[lane] = vx;
        y[lane] = vy;
        z[lane] = vz;
    }
    [[nodiscard]] Vectors to(const Vectors& other) const
    {
        return {other.x - x, other.y - y, other.z - z};
    }
    [[nodiscard]] Vectors cross(const Vectors& o) const
    {
        return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x};
    }
    [[nodiscard]] Lanes dot(const Vectors& o) const { return x * o.x + y * o.y + z * o.z; }
    [[nodiscard]] Vectors times(Lanes factor) const { return {x * factor, y * factor, z * factor}; }
};

/// In double, since the difference of products leaves little of a float.
Vec3d unitNormal(const SortedTriangle& triangle)
{
    const Vec3d a = vectorTo(triangle.corners[0]);
    const Vec3d ab = vectorTo(triangle.corners[1]) - a;
    const Vec3d ac = vectorTo(triangle.corners[2]) - a;
    const Vec3d normal = ab.cross(ac);
    const double square = normal.squareLength();
    if (!(square > FlatSine * ab.squareLength() * ac.squareLength()))
        return {};
    return normal * (1 / std::sqrt(square));
}

LeafPlanes::Plane planeThrough(const Vectors& point, const Vectors& unit)
{
    return {unit.x, unit.y, unit.z, point.dot(unit)};
}

/// Zeros for a vector that is too short.
Vectors normalized(const Vectors& vectors)
{
    const Lanes square = vectors.dot(vectors);
    const Lanes factor = 1.F / squareRoot(larger(square, lanesOf(ShortEdge)));
    return vectors.times(square > ShortEdge ? factor : Lanes{});
}

} // namespace

LeafPlanes LeafPlanes::of(std::span<const SortedTriangle> triangles, const SearchSpace& space)
{
    Vectors corners[3];
    Vectors normal;
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        const int lane = static_cast<int>(i);
        const Vec3d unit = unitNormal(triangles[i]);
        normal.set(lane, static_cast<float>(unit[0]), static_cast<float>(unit[1]),
                   static_cast<float>(unit[2]));
        for (unsigned int k = 0; k < 3; ++k) {
            const std::array<float, 3> at = space.place(triangles[i].corners[k]);
            corners[k].set(lane, at[0], at[1], at[2]);
        }
    }
    LeafPlanes planes;
    planes.own = planeThrough(corners[0], normal);
    for (unsigned int k = 0; k < 3; ++k) {
        const Vectors edge = corners[k].to(corners[(k + 1) % 3]);
        planes.edges[k] = planeThrough(corners[k], normalized(edge.cross(normal)));
    }
    return planes;
}

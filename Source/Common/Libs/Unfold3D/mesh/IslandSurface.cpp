#include "Unfold3D/mesh/IslandSurface.h"

#include "Unfold3D/base/RestTriangle.h"
#include "Unfold3D/mesh/Winding.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <span>

namespace unfold3d
{

namespace
{

/// The places of numbers in an ascending list. Where the list is dense, as that of an island mostly
/// is, a table gives them.
class PlaceInList
{
public:
    explicit PlaceInList(std::span<const int> list) : list_(list)
    {
        if (list.empty() || (list.back() - list.front()) / mostSparse > std::ssize(list))
            return;
        table_.resize(static_cast<std::size_t>(list.back() - list.front()) + 1);
        for (std::size_t place = 0; place < list.size(); ++place)
            table_[static_cast<std::size_t>(list[place] - list.front())] = static_cast<int>(place);
    }
    int of(int number) const
    {
        if (!table_.empty())
            return table_[static_cast<std::size_t>(number - list_.front())];
        return static_cast<int>(std::lower_bound(list_.begin(), list_.end(), number) -
                                list_.begin());
    }

private:
    static constexpr int mostSparse = 4;
    std::span<const int> list_;
    std::vector<int> table_;
};

void numberFromZero(const ImportedMesh& mesh, const Islands& islands, int island,
                    IslandSurface& surface)
{
    for (const int v : islands.vertices[island])
        if (islands.anchor[static_cast<std::size_t>(v)] == v)
            surface.vertices.push_back(v);
    const PlaceInList local(surface.vertices);
    const std::span<const int> triangles = islands.triangles[island];
    surface.triangles.assign(triangles.begin(), triangles.end());
    surface.mesh.triangles.reserve(surface.triangles.size());
    for (const int t : surface.triangles) {
        const auto& [a, b, c] = mesh.triangles[static_cast<std::size_t>(t)];
        surface.mesh.triangles.push_back({local.of(a), local.of(b), local.of(c)});
    }
}

/// Brings the points into a box of side 1 around the origin; returns the side before. By
/// differences to the middle, so that an island far from the origin keeps its digits.
double fillUnitBox(std::vector<Vec3>& points)
{
    Vec3 low = points.front();
    Vec3 high = low;
    for (const Vec3& p : points) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    const Vec3 middle = low + 0.5 * (high - low);
    const double side = std::max({high.x - low.x, high.y - low.y, high.z - low.z});
    const double divisor = side > 0.0 ? side : 1.0;
    for (Vec3& p : points) {
        const Vec3 fromMiddle = p - middle;
        p = {fromMiddle.x / divisor, fromMiddle.y / divisor, fromMiddle.z / divisor};
    }
    return side;
}

/// The area of the surface, stand-ins included.
double restArea(const IslandMesh& mesh, double meanEdge)
{
    double area = 0.0;
    for (const Triangle& t : mesh.triangles)
        area += restTriangle(mesh.positions[static_cast<std::size_t>(t[0])],
                             mesh.positions[static_cast<std::size_t>(t[1])],
                             mesh.positions[static_cast<std::size_t>(t[2])], meanEdge)
                    .area();
    return area;
}

double meanLongestEdge(const IslandMesh& mesh)
{
    double sum = 0.0;
    for (const Triangle& t : mesh.triangles) {
        double longest = 0.0;
        for (std::size_t i = 0; i < 3; ++i)
            longest =
                std::max(longest, length(mesh.positions[static_cast<std::size_t>(t[i])] -
                                         mesh.positions[static_cast<std::size_t>(t[(i + 1) % 3])]));
        sum += longest;
    }
    return sum / mesh.triangleCount();
}

} // namespace

double normalise(IslandMesh& mesh)
{
    const double side = fillUnitBox(mesh.positions);
    if (!(side > 0.0))
        return 1.0; // one point: everything is a stand-in of a size of its own
    const double scale = std::sqrt(restArea(mesh, meanLongestEdge(mesh)));
    for (Vec3& p : mesh.positions)
        p = (1.0 / scale) * p;
    return side * scale;
}

IslandSurface takeIsland(const ImportedMesh& mesh, const Islands& islands, int island,
                         const RunControl& control)
{
    IslandSurface surface;
    numberFromZero(mesh, islands, island, surface);
    control.checkpoint();
    surface.obstacle =
        windConsistently(surface.mesh.triangles, static_cast<int>(surface.vertices.size()));
    if (surface.obstacle != Obstacle::None) {
        surface.mesh = IslandMesh();
        return surface;
    }
    surface.mesh.positions.reserve(surface.vertices.size());
    for (const int v : surface.vertices)
        surface.mesh.positions.push_back(mesh.positions[static_cast<std::size_t>(v)]);
    control.checkpoint();
    surface.size = normalise(surface.mesh);
    return surface;
}

} // namespace unfold3d

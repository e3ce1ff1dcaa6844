#include "Unfold3D/seams/MirrorPlane.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

namespace unfold3d
{

namespace
{

/// Of the samples, so many may be without an image.
constexpr double leastShare = 0.98;
/// Axes whose moments differ by less are about as long, as a share of the longest.
constexpr double leastGap = 0.01;

using Matrix3 = std::array<std::array<double, 3>, 3>;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

struct Axis
{
    Vec3 direction;
    double moment;
};

Matrix3 momentsOf(std::span<const Vec3> positions, std::span<const Triangle> triangles)
{
    Matrix3 moments{};
    for (const Triangle& t : triangles) {
        const std::array p{positions[at(t[0])], positions[at(t[1])], positions[at(t[2])]};
        const double area = 0.5 * length(cross(p[1] - p[0], p[2] - p[0]));
        for (const Vec3 q : {p[0], p[1], p[2], p[0] + p[1] + p[2]}) {
            const std::array x{q.x, q.y, q.z};
            for (std::size_t i = 0; i < 3; ++i)
                for (std::size_t k = 0; k < 3; ++k)
                    moments[i][k] += area / 12.0 * x[i] * x[k];
        }
    }
    return moments;
}

/// Turns the plane of two axes so that the entry between them becomes 0 (Jacobi 1846).
void rotate(Matrix3& m, Matrix3& axes, std::size_t p, std::size_t q)
{
    if (m[p][q] == 0.0)
        return;
    const double theta = (m[q][q] - m[p][p]) / (2.0 * m[p][q]);
    const double t =
        (theta < 0.0 ? -1.0 : 1.0) / (std::abs(theta) + std::sqrt(theta * theta + 1.0));
    const double c = 1.0 / std::sqrt(t * t + 1.0);
    const double s = t * c;
    for (std::size_t i = 0; i < 3; ++i) {
        const double ip = m[i][p];
        m[i][p] = c * ip - s * m[i][q];
        m[i][q] = s * ip + c * m[i][q];
    }
    for (std::size_t i = 0; i < 3; ++i) {
        const double pi = m[p][i];
        m[p][i] = c * pi - s * m[q][i];
        m[q][i] = s * pi + c * m[q][i];
        const double ip = axes[i][p];
        axes[i][p] = c * ip - s * axes[i][q];
        axes[i][q] = s * ip + c * axes[i][q];
    }
}

/// The shortest first.
std::array<Axis, 3> principalAxes(Matrix3 moments)
{
    constexpr int sweeps = 12;
    Matrix3 axes{{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}}};
    for (int sweep = 0; sweep < sweeps; ++sweep)
        for (const auto& [p, q] : {std::pair(0U, 1U), std::pair(0U, 2U), std::pair(1U, 2U)})
            rotate(moments, axes, p, q);
    std::array<Axis, 3> result;
    for (std::size_t i = 0; i < 3; ++i)
        result[i] = {{axes[0][i], axes[1][i], axes[2][i]}, moments[i][i]};
    std::sort(result.begin(), result.end(),
              [](const Axis& a, const Axis& b) { return a.moment < b.moment; });
    return result;
}

/// Finds vertices near a point: by cells, sorted.
class VertexCells
{
public:
    VertexCells(std::span<const Vec3> positions, double size) : positions_(positions), size_(size)
    {
        entries_.reserve(positions.size());
        for (std::size_t v = 0; v < positions.size(); ++v)
            entries_.emplace_back(keyOf(cellOf(positions[v])), static_cast<int>(v));
        std::sort(entries_.begin(), entries_.end());
    }

    /// Whether there is one within a distance, which is at most the size of a cell.
    bool isAnyWithin(double distance, Vec3 point) const
    {
        const auto [x, y, z] = cellOf(point);
        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -1; dy <= 1; ++dy)
                for (int dz = -1; dz <= 1; ++dz) {
                    const std::uint64_t key = keyOf({x + dx, y + dy, z + dz});
                    for (auto entry =
                             std::lower_bound(entries_.begin(), entries_.end(), std::pair(key, -1));
                         entry != entries_.end() && entry->first == key; ++entry)
                        if (length(positions_[at(entry->second)] - point) <= distance)
                            return true;
                }
        return false;
    }

private:
    using Cell = std::array<std::int64_t, 3>;

    Cell cellOf(Vec3 p) const
    {
        return {std::llround(p.x / size_), std::llround(p.y / size_), std::llround(p.z / size_)};
    }
    static std::uint64_t keyOf(const Cell& cell)
    {
        constexpr std::int64_t middle = 1 << 20;
        std::uint64_t key = 0;
        for (const std::int64_t c : cell)
            key = key << 21U | static_cast<std::uint64_t>((c + middle) & (2 * middle - 1));
        return key;
    }

    std::span<const Vec3> positions_;
    double size_;
    std::vector<std::pair<std::uint64_t, int>> entries_;
};

double meanEdge(std::span<const Vec3> positions, std::span<const Triangle> triangles)
{
    double sum = 0.0;
    for (const Triangle& t : triangles)
        sum += length(positions[at(t[1])] - positions[at(t[0])]);
    return triangles.empty() ? 0.0 : sum / static_cast<double>(triangles.size());
}

} // namespace

std::optional<Vec3> mirrorPlane(std::span<const Vec3> positions,
                                std::span<const Triangle> triangles, std::span<const int> samples)
{
    const double edge = meanEdge(positions, triangles);
    if (!(edge > 1e-5))
        return std::nullopt;
    const std::array<Axis, 3> axes = principalAxes(momentsOf(positions, triangles));
    const VertexCells cells(positions, edge);
    for (std::size_t i = 0; i < 3; ++i) {
        const auto isNear = [&](std::size_t k) {
            return std::abs(axes[k].moment - axes[i].moment) < leastGap * axes[2].moment;
        };
        if (isNear((i + 1) % 3) || isNear((i + 2) % 3))
            continue;
        const Vec3 n = axes[i].direction;
        const auto hasImage = [&](int v) {
            const Vec3 p = positions[at(v)];
            return cells.isAnyWithin(edge, p - (2.0 * dot(p, n)) * n);
        };
        const auto count = std::count_if(samples.begin(), samples.end(), hasImage);
        if (static_cast<double>(count) >= leastShare * static_cast<double>(samples.size()))
            return n;
    }
    return std::nullopt;
}

} // namespace unfold3d

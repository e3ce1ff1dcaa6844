#include "solver/RoundingRepair.h"

#include "check/Orientation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace uvtool
{
namespace
{

constexpr int mostRounds = 40;
/// Every so many rounds without success steps double.
constexpr int roundsPerStep = 4;
/// Places are tried up to this many steps away along each axis.
constexpr int reach = 2;
/// Height of a triangle, in steps, beyond which nothing threatens it.
constexpr double safeHeight = 1.5;

float turnedAndBack(float v)
{
    return 1.0F - (1.0F - v);
}

/// Distance of neighbouring floats where they are farthest apart in a layout.
double coarsestStep(std::span<const Vec2f> uvs, bool vIsTurned)
{
    float largest = vIsTurned ? 0.5F : 0.0F;
    for (const Vec2f& uv : uvs)
        largest = std::max({largest, std::abs(uv[0]), std::abs(uv[1])});
    return double{std::nextafter(largest, std::numeric_limits<float>::infinity())} - largest;
}

class Repair
{
public:
    Repair(std::span<const std::uint32_t> triangles, std::span<const std::int8_t> wantedTurns,
           bool vIsTurned, std::vector<Vec2f>& uvs, std::span<const char> isFixed)
        : triangles_(triangles), wantedTurns_(wantedTurns), vIsTurned_(vIsTurned), uvs_(uvs),
          isFixed_(isFixed), step_(coarsestStep(uvs, vIsTurned))
    {
        offsets_.assign(uvs.size() + 1, 0);
        for (const std::uint32_t vertex : triangles)
            ++offsets_[vertex + 1];
        for (std::size_t v = 0; v < uvs.size(); ++v)
            offsets_[v + 1] += offsets_[v];
        trianglesAt_.resize(triangles.size());
        std::vector<std::uint32_t> next(offsets_.begin(), offsets_.end() - 1);
        for (std::uint32_t i = 0; i < triangles.size(); ++i)
            trianglesAt_[next[triangles[i]]++] = i / 3;
    }

    void run(std::vector<std::uint32_t> bad)
    {
        for (int round = 0; round < mostRounds && !bad.empty(); ++round) {
            const double step = std::ldexp(step_, round / roundsPerStep);
            std::vector<std::uint32_t> touched = bad;
            for (const std::uint32_t vertex : verticesOf(bad))
                if (moveToSafety(vertex, step))
                    touched.insert(touched.end(), around(vertex).begin(), around(vertex).end());
            std::sort(touched.begin(), touched.end());
            touched.erase(std::unique(touched.begin(), touched.end()), touched.end());
            std::erase_if(touched, [&](std::uint32_t t) { return turn(t) >= wantedTurn(t); });
            bad = std::move(touched);
        }
    }

private:
    const Vec2f& point(std::uint32_t t, std::size_t k) const
    {
        return uvs_[triangles_[3 * std::size_t{t} + k]];
    }
    int wantedTurn(std::uint32_t t) const { return wantedTurns_[t] == 0 ? -1 : 1; }
    /// 1 when it turns as it should.
    int turn(std::uint32_t t) const
    {
        return wantedTurns_[t] * orientation(point(t, 0), point(t, 1), point(t, 2));
    }
    std::span<const std::uint32_t> around(std::uint32_t vertex) const
    {
        return std::span(trianglesAt_)
            .subspan(offsets_[vertex], offsets_[vertex + 1] - offsets_[vertex]);
    }

    std::vector<std::uint32_t> verticesOf(const std::vector<std::uint32_t>& bad) const
    {
        std::vector<std::uint32_t> vertices;
        for (const std::uint32_t t : bad)
            for (std::size_t k = 0; k < 3; ++k)
                vertices.push_back(triangles_[3 * std::size_t{t} + k]);
        std::sort(vertices.begin(), vertices.end());
        vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
        if (!isFixed_.empty())
            std::erase_if(vertices, [&](std::uint32_t v) { return isFixed_[v] != 0; });
        return vertices;
    }

    /// Height over the longest edge, negative when turned over; no more than is safe.
    double heightOf(std::uint32_t t) const
    {
        const auto edge = [&](std::size_t from, std::size_t to) {
            return std::array<double, 2>{double{point(t, to)[0]} - point(t, from)[0],
                                         double{point(t, to)[1]} - point(t, from)[1]};
        };
        const auto ab = edge(0, 1);
        const auto ac = edge(0, 2);
        const auto bc = edge(1, 2);
        const double longest = std::max(
            {std::hypot(ab[0], ab[1]), std::hypot(ac[0], ac[1]), std::hypot(bc[0], bc[1]), step_});
        const double area = std::abs(ab[0] * ac[1] - ab[1] * ac[0]);
        return std::min(turn(t) * area / longest, safeHeight * step_);
    }

    /// The least height of the triangles around a vertex, then the sum of all.
    std::array<double, 2> safetyAt(std::uint32_t vertex) const
    {
        std::array<double, 2> safety{safeHeight * step_, 0.0};
        for (const std::uint32_t t : around(vertex)) {
            if (wantedTurns_[t] == 0)
                continue;
            const double height = heightOf(t);
            safety[0] = std::min(safety[0], height);
            safety[1] += height;
        }
        return safety;
    }

    Vec2f onGrid(double u, double v) const
    {
        const auto rounded = static_cast<float>(v);
        return {static_cast<float>(u), vIsTurned_ ? turnedAndBack(rounded) : rounded};
    }

    /// Puts a vertex where the triangles around it are safest; of equal places to the nearest.
    bool moveToSafety(std::uint32_t vertex, double step)
    {
        const Vec2f home = uvs_[vertex];
        Vec2f best = home;
        std::array<double, 2> bestSafety = safetyAt(vertex);
        int bestWay = 0;
        for (int i = -reach; i <= reach; ++i)
            for (int j = -reach; j <= reach; ++j) {
                uvs_[vertex] = onGrid(home[0] + i * step, home[1] + j * step);
                const std::array<double, 2> safety = safetyAt(vertex);
                const int way = i * i + j * j;
                if (safety > bestSafety || (safety == bestSafety && way < bestWay)) {
                    best = uvs_[vertex];
                    bestSafety = safety;
                    bestWay = way;
                }
            }
        uvs_[vertex] = best;
        return best != home;
    }

    std::span<const std::uint32_t> triangles_;
    std::span<const std::int8_t> wantedTurns_;
    bool vIsTurned_;
    std::vector<Vec2f>& uvs_;
    std::span<const char> isFixed_;
    double step_;
    std::vector<std::uint32_t> offsets_;
    std::vector<std::uint32_t> trianglesAt_; ///< by vertex, [offsets_[v], offsets_[v + 1])
};

} // namespace

void roundForTurnedV(std::vector<Vec2f>& uvs)
{
    for (Vec2f& uv : uvs)
        uv[1] = turnedAndBack(uv[1]);
}

std::vector<std::int8_t> turnsOf(std::span<const std::uint32_t> triangles,
                                 std::span<const Vec2f> uvs)
{
    std::vector<std::int8_t> turns;
    turns.reserve(triangles.size() / 3);
    for (std::size_t i = 0; i + 2 < triangles.size(); i += 3)
        turns.push_back(static_cast<std::int8_t>(
            orientation(uvs[triangles[i]], uvs[triangles[i + 1]], uvs[triangles[i + 2]])));
    return turns;
}

void repairRounding(std::span<const std::uint32_t> triangles,
                    std::span<const std::int8_t> wantedTurns, bool vIsTurned,
                    std::vector<Vec2f>& uvs, std::span<const char> isFixed)
{
    const std::vector<std::int8_t> turns = turnsOf(triangles, uvs);
    std::vector<std::uint32_t> bad;
    for (std::uint32_t t = 0; t < turns.size(); ++t)
        if (wantedTurns[t] != 0 && turns[t] != wantedTurns[t])
            bad.push_back(t);
    if (!bad.empty())
        Repair(triangles, wantedTurns, vIsTurned, uvs, isFixed).run(std::move(bad));
}

} // namespace uvtool

#include "Unfold3D/layout/FloatLayout.h"

#include "Unfold3D/base/ExactPredicates.h"
#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/base/OffsetArray.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace unfold3d
{

namespace
{

/// Rounds of moves; every few rounds the steps become longer.
constexpr int maxRounds = 48;
constexpr int roundsPerStep = 4;
/// Candidates lie up to this many steps away along each axis.
constexpr int reach = 2;
/// Height in steps of the float grid beyond which a triangle is out of danger.
constexpr double safeHeight = 1.5;

double toFloat(double value)
{
    return static_cast<double>(static_cast<float>(value));
}

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// Distance of neighbouring floats where they are farthest apart in this layout.
double coarsestStep(std::span<const Vec2> uv)
{
    float largest = 0.0F;
    for (const Vec2 p : uv)
        largest = std::max(
            {largest, static_cast<float>(std::abs(p.x)), static_cast<float>(std::abs(p.y))});
    return static_cast<double>(std::nextafter(largest, std::numeric_limits<float>::infinity()) -
                               largest);
}

class FlipRepair
{
public:
    FlipRepair(std::span<const Triangle> triangles, std::vector<Vec2>& uv,
               std::span<const std::uint8_t> held)
        : triangles_(triangles), uv_(uv), held_(held), step_(coarsestStep(uv))
    {
        std::vector<int> vertexOfCorner;
        vertexOfCorner.reserve(3 * triangles.size());
        for (const Triangle& t : triangles)
            vertexOfCorner.insert(vertexOfCorner.end(), t.begin(), t.end());
        cornersOfVertex_ = groupByKey(vertexOfCorner, static_cast<int>(uv.size()));
    }

    /// Moves vertices until no triangle of `bad` nor any other is flipped, or the rounds are up.
    void run(std::vector<int> bad)
    {
        for (int round = 0; round < maxRounds && !bad.empty(); ++round) {
            const double step = std::ldexp(step_, round / roundsPerStep);
            std::vector<int> touched;
            for (const int v : verticesOf(bad))
                if (moveToSafety(v, step))
                    touched.push_back(v);
            addTrianglesAt(touched, bad);
            std::erase_if(bad, [&](int t) { return isSound(t); });
        }
    }

private:
    Vec2 corner(int t, int i) const { return uv_[at(triangles_[at(t)][at(i)])]; }
    bool isSound(int t) const { return orient2d(corner(t, 0), corner(t, 1), corner(t, 2)) > 0; }

    std::vector<int> verticesOf(const std::vector<int>& bad) const
    {
        std::vector<int> vertices;
        for (const int t : bad)
            vertices.insert(vertices.end(), triangles_[at(t)].begin(), triangles_[at(t)].end());
        std::sort(vertices.begin(), vertices.end());
        vertices.erase(std::unique(vertices.begin(), vertices.end()), vertices.end());
        return vertices;
    }
    void addTrianglesAt(const std::vector<int>& vertices, std::vector<int>& bad) const
    {
        for (const int v : vertices)
            for (const int corner : cornersOfVertex_[v])
                bad.push_back(corner / 3);
        std::sort(bad.begin(), bad.end());
        bad.erase(std::unique(bad.begin(), bad.end()), bad.end());
    }

    /// Height of a triangle over its longest edge, signed; no more than is safe.
    double heightOf(int t) const
    {
        const Vec2 a = corner(t, 0);
        const Vec2 b = corner(t, 1);
        const Vec2 c = corner(t, 2);
        const double longest = std::max({length(b - a), length(c - b), length(a - c)});
        const int side = orient2d(a, b, c);
        const double height = std::abs(doubleArea(a, b, c)) / std::max(longest, step_);
        return std::min(side * height, safeHeight * step_);
    }
    /// How safe the triangles around v are: the least height, then their sum.
    std::array<double, 2> safetyAt(int v) const
    {
        std::array<double, 2> safety{safeHeight * step_, 0.0};
        for (const int corner : cornersOfVertex_[v]) {
            const double height = heightOf(corner / 3);
            safety[0] = std::min(safety[0], height);
            safety[1] += height;
        }
        return safety;
    }

    /// Puts v to the place around it where its triangles are safest, the nearest of equal ones.
    bool moveToSafety(int v, double step)
    {
        const Vec2 home = uv_[at(v)];
        const int holds = held_.empty() ? 0 : held_[at(v)];
        const int reachU = (holds & HoldU) != 0 ? 0 : reach;
        const int reachV = (holds & HoldV) != 0 ? 0 : reach;
        Vec2 best = home;
        std::array<double, 2> bestSafety = safetyAt(v);
        int bestWay = 0;
        for (int i = -reachU; i <= reachU; ++i)
            for (int j = -reachV; j <= reachV; ++j) {
                uv_[at(v)] = {toFloat(home.x + i * step), toFloat(home.y + j * step)};
                const std::array<double, 2> safety = safetyAt(v);
                const int way = i * i + j * j;
                if (safety > bestSafety || (safety == bestSafety && way < bestWay)) {
                    best = uv_[at(v)];
                    bestSafety = safety;
                    bestWay = way;
                }
            }
        uv_[at(v)] = best;
        return !(best == home);
    }

    std::span<const Triangle> triangles_;
    std::vector<Vec2>& uv_;
    std::span<const std::uint8_t> held_;
    OffsetArray<int> cornersOfVertex_;
    double step_;
};

} // namespace

FloatRounding roundToFloats(std::span<const Triangle> triangles, std::vector<Vec2>& uv,
                            std::span<const std::uint8_t> held)
{
    FloatRounding result;
    for (Vec2& p : uv)
        p = {toFloat(p.x), toFloat(p.y)};
    std::vector<int> flipped = flippedTriangles(triangles, uv);
    if (flipped.empty())
        return result;

    const std::vector<Vec2> rounded = uv;
    FlipRepair(triangles, uv, held).run(std::move(flipped));
    for (std::size_t v = 0; v < uv.size(); ++v)
        result.moved += !(uv[v] == rounded[v]);
    result.flipsLeft = static_cast<int>(flippedTriangles(triangles, uv).size());
    return result;
}

} // namespace unfold3d

#include "Unfold3D/parameterisation/Untangle.h"

#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/parameterisation/LayoutMinimiser.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// How many rings of triangles around the flipped ones move in the first attempts. An attempt that
/// would move more than the given share of all vertices is left to the last, which moves them all.
constexpr int ringsOfAttempts[] = {3, 12};
constexpr double largestShareOfAttempt = 0.3;

/// The softness to begin with, as a share of the worst determinant, and at least.
constexpr double firstSoftness = 0.2;
constexpr double leastFirstSoftness = 1e-4;
constexpr double leastSoftness = 1e-12;
/// What the regularised determinant of the worst triangle falls by at least each time.
constexpr double leastFall = 0.1;

/// Each round needs to be good enough for the next softness only.
constexpr StopRule roundStop{.promisedShare = 1e-3, .promisedShareOfExcess = 1.0, .maxSteps = 5};

/// Rounds until it is given up, in all and without fewer flips.
struct Patience
{
    int rounds;
    int idleRounds;
};
constexpr Patience patienceWithFixed{60, 20};
/// A whole island can always be laid out anew, which is quicker than a long untangling.
constexpr Patience patienceWithWhole{15, 6};

/// What is left flipped is relaxed with this softness.
constexpr double softnessOfRest = 0.1;
constexpr StopRule restStop{.promisedShare = 1e-3, .promisedShareOfExcess = 1.0, .maxSteps = 20};

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

double regularised(double determinant, double softness)
{
    const double root = std::sqrt(determinant * determinant + softness * softness);
    return determinant > 0.0 ? 0.5 * (determinant + root)
                             : 0.5 * softness * softness / (root - determinant);
}

/// The softness for which the worst triangle's regularised determinant falls by what the energy
/// fell.
double nextSoftness(double softness, double determinant, double energyShareKept)
{
    const double fall = std::max(1.0 - energyShareKept, leastFall);
    const double aim = (1.0 - fall) * regularised(determinant, softness);
    const double next = aim > determinant ? 2.0 * std::sqrt(aim * (aim - determinant)) : 0.0;
    return std::max(next, leastSoftness);
}

/// [vertex] all but those within some rings of triangles around the flipped ones, which can move.
std::vector<char> fixedBeyond(int rings, const MovablePart& part, std::span<const int> flipped)
{
    std::vector<char> isNear(at(part.mesh.vertexCount()), 0);
    for (const int t : flipped)
        for (const int v : part.corners[at(t)])
            isNear[at(v)] = 1;
    for (int ring = 1; ring < rings; ++ring) {
        const std::vector<char> before = isNear;
        for (const Triangle& corners : part.corners)
            if (std::any_of(corners.begin(), corners.end(), [&](int v) { return before[at(v)]; }))
                for (const int v : corners)
                    isNear[at(v)] = 1;
    }
    std::vector<char> isFixed(isNear.size());
    for (std::size_t v = 0; v < isFixed.size(); ++v)
        isFixed[v] = static_cast<char>(!isNear[v] || (!part.isWhole() && part.isFixed[v]));
    return isFixed;
}

/// The triangles of an island that can change, as an island of their own.
struct Excerpt
{
    IslandMesh mesh;
    std::vector<int> vertices; ///< [vertex of mesh] in the island
    std::vector<char> isFixed; ///< [vertex of mesh]

    explicit Excerpt(const MovablePart& part)
    {
        std::vector<int> own(part.mesh.positions.size(), -1);
        for (Triangle corners : part.corners) {
            for (int& v : corners) {
                int& place = own[at(v)];
                if (place < 0) {
                    place = static_cast<int>(vertices.size());
                    vertices.push_back(v);
                }
                v = place;
            }
            mesh.triangles.push_back(corners);
        }
        for (const int v : vertices) {
            mesh.positions.push_back(part.mesh.positions[at(v)]);
            isFixed.push_back(static_cast<char>(!part.isWhole() && part.isFixed[at(v)]));
        }
    }
};

/// The continuation with one set of vertices that move.
class Untangling
{
public:
    Untangling(const MovablePart& part, const RunControl& control, UntangleResult& result)
        : part_(part), result_(result), minimiser_(part, control)
    {}

    void run(const std::function<void(double)>& progress)
    {
        std::vector<Vec2> uv = result_.uv;
        double determinant = minimiser_.leastDeterminant(uv);
        double softness = std::hypot(leastFirstSoftness, firstSoftness * determinant);
        std::size_t fewest = flippedTriangles(part_.corners, uv).size();
        const Patience patience = part_.isWhole() ? patienceWithWhole : patienceWithFixed;
        int idle = 0;
        for (int round = 0; round < patience.rounds && fewest > 0 && idle < patience.idleRounds;
             ++round)
        {
            const double kept = improve(uv, softness);
            determinant = minimiser_.leastDeterminant(uv);
            softness = nextSoftness(softness, determinant, kept);
            const std::size_t flips = flippedTriangles(part_.corners, uv).size();
            ++idle;
            if (flips < fewest) {
                idle = 0;
                fewest = flips;
                result_.uv = uv;
            }
            progress((round + 1.0) / patience.rounds);
        }
        result_.isDone = fewest == 0;
    }

private:
    /// Returns the share of the energy that is left.
    double improve(std::vector<Vec2>& uv, double softness)
    {
        const LayoutMinimiser::Outcome outcome =
            minimiser_.minimise(uv, {.energy = {.softness = softness}}, roundStop,
                                [](const NodeLayout&, double) { return true; });
        result_.steps += outcome.steps;
        return outcome.energyAfter / outcome.energyBefore;
    }

    const MovablePart& part_;
    UntangleResult& result_;
    LayoutMinimiser minimiser_;
};

/// So that what is far away and can't move costs nothing.
void untangleExcerpt(const Excerpt& excerpt, const RunControl& control, UntangleResult& result,
                     const std::function<void(double)>& progress)
{
    UntangleResult own;
    own.steps = result.steps;
    for (const int v : excerpt.vertices)
        own.uv.push_back(result.uv[at(v)]);
    const MovablePart part(excerpt.mesh, excerpt.isFixed);
    Untangling(part, control, own).run(progress);
    for (std::size_t v = 0; v < own.uv.size(); ++v)
        result.uv[at(excerpt.vertices[v])] = own.uv[v];
    result.steps = own.steps;
    result.isDone = own.isDone;
}

} // namespace

void continueFixedPart(const MovablePart& part, std::vector<Vec2>& uv, const RunControl& control)
{
    LayoutMinimiser(part, control)
        .minimise(uv, {.energy = {.isConformal = true}}, {.maxSteps = 1},
                  [](const NodeLayout&, double) { return true; });
}

void settleWithFlips(const MovablePart& part, std::vector<Vec2>& uv, const RunControl& control)
{
    LayoutMinimiser(part, control)
        .minimise(uv, {.energy = {.softness = softnessOfRest}}, restStop,
                  [](const NodeLayout&, double) { return true; });
}

UntangleResult untangle(const MovablePart& part, std::vector<Vec2> uv, const RunControl& control,
                        const std::function<void(double)>& progress)
{
    UntangleResult result;
    result.uv = std::move(uv);
    double done = 0.0;
    const auto attempt = [&](std::span<const char> isFixed) {
        const double begin = done;
        done += 0.5 * (1.0 - done);
        const auto tell = [&](double fraction) { progress(begin + fraction * (done - begin)); };
        const MovablePart own(part.mesh, isFixed);
        if (own.isWhole())
            Untangling(own, control, result).run(tell);
        else
            untangleExcerpt(Excerpt(own), control, result, tell);
    };
    for (const int rings : ringsOfAttempts) {
        const std::vector<int> flipped = flippedTriangles(part.corners, result.uv);
        const std::vector<char> isFixed = fixedBeyond(rings, part, flipped);
        const auto moving = std::count(isFixed.begin(), isFixed.end(), 0);
        if (static_cast<double>(moving) >
            largestShareOfAttempt * static_cast<double>(isFixed.size()))
            break;
        attempt(isFixed);
        if (result.isDone)
            return result;
    }
    attempt(part.isFixed);
    return result;
}

} // namespace unfold3d

#include "Unfold3D/commands/UnfoldIsland.h"

#include "Unfold3D/base/DisjointSets.h"
#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/layout/Placement.h"
#include "Unfold3D/mesh/IslandSurface.h"
#include "Unfold3D/start/FlatStart.h"

#include <algorithm>
#include <cmath>

namespace unfold3d
{

namespace
{

/// UVs that only repeat the positions in space say nothing about a layout.
bool hasLayout(const Session& session, const std::vector<int>& vertices)
{
    return std::any_of(vertices.begin(), vertices.end(), [&](int vertex) {
        const auto v = static_cast<std::size_t>(vertex);
        const Vec3& p = session.mesh.positions[v];
        return session.uvs[v].x != p.x || session.uvs[v].y != p.y || session.w[v] != p.z;
    });
}

std::vector<Vec2> oldLayout(const Session& session, const std::vector<int>& vertices)
{
    std::vector<Vec2> old;
    old.reserve(vertices.size());
    for (const int v : vertices)
        old.push_back(session.uvs[static_cast<std::size_t>(v)]);
    return old;
}

/// Chains of edges with one pin become one line each.
void collectLines(const Session& session, const IslandSurface& surface, EdgePin pin,
                  std::vector<StraightLine>& lines)
{
    DisjointSets chains(surface.mesh.vertexCount());
    std::vector<char> isPinned(surface.vertices.size(), 0);
    for (std::size_t t = 0; t < surface.triangles.size(); ++t) {
        const auto imported = static_cast<std::size_t>(surface.triangles[t]);
        const Triangle& corner = surface.mesh.triangles[t];
        for (const int edge : session.edges->ofTriangle[imported]) {
            if (session.pins[static_cast<std::size_t>(edge)] != pin)
                continue;
            int ends[2] = {-1, -1};
            for (const int v : corner) {
                const int global = surface.vertices[static_cast<std::size_t>(v)];
                const auto& named = session.edges->vertices[static_cast<std::size_t>(edge)];
                for (std::size_t k = 0; k < 2; ++k)
                    if (named[k] == global)
                        ends[k] = v;
            }
            chains.join(ends[0], ends[1]);
            isPinned[static_cast<std::size_t>(ends[0])] = 1;
            isPinned[static_cast<std::size_t>(ends[1])] = 1;
        }
    }
    std::vector<int> lineOfRoot(surface.vertices.size(), -1);
    for (int v = 0; v < surface.mesh.vertexCount(); ++v) {
        if (!isPinned[static_cast<std::size_t>(v)])
            continue;
        int& line = lineOfRoot[static_cast<std::size_t>(chains.find(v))];
        if (line < 0) {
            line = static_cast<int>(lines.size());
            lines.push_back({pin == EdgePin::Horizontal, {}});
        }
        lines[static_cast<std::size_t>(line)].vertices.push_back(v);
    }
}

std::vector<StraightLine> straightLines(const Session& session, const IslandSurface& surface)
{
    std::vector<StraightLine> lines;
    if (session.pins.empty())
        return lines;
    collectLines(session, surface, EdgePin::Horizontal, lines);
    collectLines(session, surface, EdgePin::Vertical, lines);
    return lines;
}

/// A result that neither converged nor came below this energy, of which 4 is the least, is tried
/// again from another start.
constexpr double hopelessEnergy = 8.0;
/// Share of the progress that is left which an attempt takes: mostly it is the only one.
constexpr double progressOfAttempt = 0.9;

/// One way from start to end.
struct Attempt
{
    FlatStart::Method start;
    std::vector<Vec2> uv; ///< empty when it failed
    FlattenReport report;

    bool isGood() const
    {
        return !uv.empty() && (report.converged || report.energy < hopelessEnergy);
    }
    bool isBetterThan(const Attempt& other) const
    {
        return !uv.empty() && (other.uv.empty() || report.energy < other.report.energy);
    }
};

/// Flattens from one start after the other until a result is good, and returns the best.
class IslandFlattener
{
public:
    IslandFlattener(const IslandMesh& mesh, std::span<const Vec2> oldLayout,
                    const FlattenOptions& options, const RunControl& control,
                    const std::function<void(double)>& progress)
        : mesh_(mesh), oldLayout_(oldLayout), options_(options), control_(control),
          progress_(progress), starts_(mesh, control)
    {}

    Obstacle obstacle() const { return starts_.obstacle(); }

    Attempt run()
    {
        std::optional<FlatStart> start = starts_.next();
        Attempt best = flattenFrom(*start);
        while (!best.isGood() && (start = starts_.next())) {
            Attempt attempt = flattenFrom(*start);
            if (attempt.isBetterThan(best))
                best = std::move(attempt);
        }
        if (best.uv.empty())
            best = settleFor(flatStart(mesh_, control_));
        if (options_.straight.empty())
            turnToExpectedSide(mesh_, oldLayout_, best.uv);
        return best;
    }

private:
    Attempt flattenFrom(FlatStart& start)
    {
        turnToExpectedSide(mesh_, oldLayout_, start.uv);
        const double begin = done_;
        done_ += progressOfAttempt * (1.0 - done_);
        FlattenResult flat =
            flatten(mesh_, std::move(start.uv), options_, control_,
                    [&](double fraction) { progress_(begin + fraction * (done_ - begin)); });
        progress_(done_);
        if (!isFlipFree(mesh_.triangles, flat.uv))
            flat.uv.clear();
        return {start.method, std::move(flat.uv), std::move(flat.report)};
    }
    /// A start itself, at the scale of the surface.
    Attempt settleFor(FlatStart start) const
    {
        double area = 0.0;
        for (const auto& [a, b, c] : mesh_.triangles)
            area += 0.5 * doubleArea(start.uv[static_cast<std::size_t>(a)],
                                     start.uv[static_cast<std::size_t>(b)],
                                     start.uv[static_cast<std::size_t>(c)]);
        for (Vec2& p : start.uv)
            p = (1.0 / std::sqrt(area)) * p;
        Attempt attempt{start.method, std::move(start.uv), {}};
        attempt.report.warnings.emplace_back(
            "The flattening failed; the layout is only a first one, without flipped triangles but "
            "distorted.");
        return attempt;
    }

    const IslandMesh& mesh_;
    std::span<const Vec2> oldLayout_;
    const FlattenOptions& options_;
    const RunControl& control_;
    const std::function<void(double)>& progress_;
    FlatStartFinder starts_;
    double done_ = 0.0; ///< progress
};

std::string methodsOf(const Attempt& attempt)
{
    std::string text = nameOf(attempt.start);
    text += " start";
    if (!attempt.report.method.empty())
        text.append(", ").append(attempt.report.method);
    return text;
}

} // namespace

IslandUnfold unfoldIsland(const Session& session, int island, const FlattenOptions& options,
                          const RunControl& control, const std::function<void(double)>& progress)
{
    IslandUnfold result;
    IslandSurface surface = takeIsland(session.mesh, session.islands, island);
    result.obstacle = surface.obstacle;
    if (result.obstacle != Obstacle::None)
        return result;
    control.checkpoint();

    result.hadLayout = hasLayout(session, surface.vertices);
    const std::vector<Vec2> old =
        result.hadLayout ? oldLayout(session, surface.vertices) : std::vector<Vec2>();
    FlattenOptions own = options;
    own.straight = straightLines(session, surface);
    IslandFlattener flattener(surface.mesh, old, own, control, progress);
    result.obstacle = flattener.obstacle();
    if (result.obstacle != Obstacle::None)
        return result;

    Attempt best = flattener.run();
    result.method = methodsOf(best);
    result.warnings = std::move(best.report.warnings);
    result.uv = std::move(best.uv);
    for (Vec2& p : result.uv)
        p = surface.size * p;
    result.vertices = std::move(surface.vertices);
    result.triangles = std::move(surface.mesh.triangles);
    return result;
}

} // namespace unfold3d

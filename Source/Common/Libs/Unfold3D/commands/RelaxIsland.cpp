#include "Unfold3D/commands/RelaxIsland.h"

#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/commands/IslandFlattener.h"
#include "Unfold3D/commands/PinnedLines.h"
#include "Unfold3D/layout/Blend.h"
#include "Unfold3D/layout/LayoutFrame.h"
#include "Unfold3D/layout/Placement.h"
#include "Unfold3D/mesh/HalfEdges.h"
#include "Unfold3D/mesh/IslandSurface.h"
#include "Unfold3D/parameterisation/BorderCrossings.h"
#include "Unfold3D/parameterisation/Relax.h"
#include "Unfold3D/start/BorderLoops.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace unfold3d
{

namespace
{

/// A layout of nothing but angles has no size; of the many with the best angles the one with the
/// least distorted lengths is taken by giving them this share.
constexpr double leastLengths = 1e-3;

/// Share of the progress until a layout is known to be free of flips, or not.
constexpr double progressOfRelaxing = 0.8;

Obstacle obstacleOf(const IslandSurface& surface)
{
    if (surface.obstacle != Obstacle::None)
        return surface.obstacle;
    const IslandMesh& mesh = surface.mesh;
    return findBorderLoops(mesh, pairHalfEdges(mesh.triangles, mesh.vertexCount())).obstacle;
}

/// Winds the triangles counter-clockwise in the layout, as far as they agree.
void windAsItLies(std::span<const Vec2> uv, std::span<const char> isFixed, IslandMesh& mesh)
{
    if (isMirrored(mesh, uv, isFixed))
        for (auto& [a, b, c] : mesh.triangles)
            std::swap(b, c);
}

std::vector<char> fixedVertices(const std::vector<int>& vertices, std::span<const char> isChosen)
{
    std::vector<char> isFixed;
    isFixed.reserve(vertices.size());
    for (const int v : vertices)
        isFixed.push_back(static_cast<char>(!isChosen[static_cast<std::size_t>(v)]));
    if (std::find(isFixed.begin(), isFixed.end(), 1) == isFixed.end())
        isFixed.clear();
    return isFixed;
}

bool isPoint(std::span<const Vec2> uv)
{
    return std::all_of(uv.begin(), uv.end(), [&](Vec2 p) { return p == uv.front(); });
}

FlattenOptions flattenOptions(const RelaxOptions& options)
{
    FlattenOptions flatten;
    flatten.iterations = options.iterations;
    flatten.preventBorderCrossings = options.preventBorderCrossings;
    flatten.roomSpace = options.roomSpace;
    flatten.lengths = std::max(options.lengths, leastLengths);
    return flatten;
}

/// One call of relaxIsland() for an island that can be laid flat.
class IslandRelaxer
{
public:
    IslandRelaxer(const IslandSurface& surface, std::vector<Vec2> before, FlattenOptions flatten,
                  const RelaxOptions& options, const RunControl& control,
                  const std::function<void(double)>& progress)
        : mesh_(surface.mesh), before_(std::move(before)), flatten_(std::move(flatten)),
          options_(options), control_(control), progress_(progress), border_(mesh_),
          frame_(frameOf(mesh_, before_, flatten_.isFixed, surface.size)),
          flipsBefore_(flippedTriangles(mesh_.triangles, before_).size()),
          crossingsBefore_(crossingsOf(before_))
    {}

    void run(IslandLayout& result)
    {
        for (const Vec2 p : before_)
            inside_.push_back(frame_.inside(p));
        const std::vector<Vec2> after =
            options_.iterations == 0 ? before_ : relaxed(result.method, result.warnings);
        if (options_.iterations != 0 && options_.power == 1.0 && isAllowed(after))
            result.uv = after;
        else
            result.uv = blendWith(after, result.warnings);
        warnOfRest(result.uv, result.warnings);
        result.isUnchanged = result.uv == before_;
    }

private:
    bool isWhole() const { return flatten_.isFixed.empty(); }

    int crossingsOf(std::span<const Vec2> uv) const
    {
        if (!options_.preventBorderCrossings)
            return 0;
        return countBorderCrossings(border_, borderPositions(border_, {uv}));
    }
    /// No worse than what came in.
    bool isAllowed(std::span<const Vec2> uv) const
    {
        control_.checkpoint();
        return (!options_.preventFlips ||
                flippedTriangles(mesh_.triangles, uv).size() <= flipsBefore_) &&
               crossingsOf(uv) <= crossingsBefore_;
    }

    /// What was untangled may have become flat only by lying around itself twice.
    bool isGood(const RelaxResult& relaxed) const
    {
        const bool mayCross = !options_.preventBorderCrossings && !relaxed.wasTangled;
        return relaxed.flips == 0 && (mayCross || relaxed.report.borderCrossings == 0);
    }

    /// The whole way, back in UV.
    std::vector<Vec2> relaxed(std::string& method, std::vector<std::string>& warnings)
    {
        RelaxResult relaxed = relax(mesh_, inside_, flatten_, control_, [&](double fraction) {
            progress_(progressOfRelaxing * fraction);
        });
        method = std::move(relaxed.report.method);
        if (isWhole() && !isGood(relaxed))
            layOutAnew(relaxed);
        for (std::string& warning : relaxed.report.warnings)
            warnings.push_back(std::move(warning));
        return placed(std::move(relaxed.uv));
    }

    void layOutAnew(RelaxResult& relaxed)
    {
        const std::function<void(double)> progress = [&](double fraction) {
            progress_(progressOfRelaxing + (1.0 - progressOfRelaxing) * fraction);
        };
        FlattenAttempt best = IslandFlattener(mesh_, inside_, flatten_, control_, progress).run();
        relaxed.report.method += "; anew: " + best.methods();
        relaxed.uv = std::move(best.uv);
        relaxed.report.warnings = std::move(best.report.warnings);
    }

    /// With which a layout gets the area that the island had. Folds tell no area: a layout with
    /// such keeps its scale.
    double scaleOf(std::span<const Vec2> uv) const
    {
        const bool hasArea = isFlipFree(mesh_.triangles, uv);
        const double area = hasArea ? layoutArea(mesh_.triangles, uv).signedSum : 1.0;
        return frame_.scale / std::sqrt(area);
    }

    /// A layout in the scale of the surface, back to where and how large the island was.
    std::vector<Vec2> placed(std::vector<Vec2> uv) const
    {
        if (isWhole()) {
            if (flatten_.straight.empty())
                turnToExpectedSide(mesh_, inside_, uv);
            const double scale = scaleOf(uv);
            for (Vec2& p : uv)
                p = scale * p;
            moveMiddleTo(frame_.middle, mesh_.triangleCount(), uv);
            return uv;
        }
        for (std::size_t v = 0; v < uv.size(); ++v)
            uv[v] = flatten_.isFixed[v] ? before_[v] : frame_.outside(uv[v]);
        return uv;
    }

    std::vector<Vec2> blendWith(const std::vector<Vec2>& after, std::vector<std::string>& warnings)
    {
        const std::vector<Vec2> base = withPinsStraight(warnings);
        const double share = options_.iterations == 0 ? 0.0 : options_.power;
        return blend(base, after, share, [&](std::span<const Vec2> uv) { return isAllowed(uv); });
    }

    /// What came in, changed as little as pinned edges ask for.
    std::vector<Vec2> withPinsStraight(std::vector<std::string>& warnings)
    {
        if (flatten_.straight.empty())
            return before_;
        FlattenResult straight = straightenOnly(mesh_, inside_, flatten_, control_);
        for (std::string& warning : straight.report.warnings)
            if (std::find(warnings.begin(), warnings.end(), warning) == warnings.end())
                warnings.push_back(std::move(warning));
        return straight.uv == inside_ ? before_ : placed(std::move(straight.uv));
    }

    void warnOfRest(std::span<const Vec2> uv, std::vector<std::string>& warnings) const
    {
        if (options_.preventFlips && !isFlipFree(mesh_.triangles, uv))
            warnings.emplace_back(
                "Some triangles stay flipped: those that came in so and could not be turned.");
        if (crossingsOf(uv) > 0)
            warnings.emplace_back("The border crosses itself in places where it came in so.");
    }

    const IslandMesh& mesh_;
    const std::vector<Vec2> before_;
    const FlattenOptions flatten_;
    const RelaxOptions& options_;
    const RunControl& control_;
    const std::function<void(double)>& progress_;
    const Border border_;
    const LayoutFrame frame_;
    const std::size_t flipsBefore_;
    const int crossingsBefore_;
    std::vector<Vec2> inside_; ///< what came in, in the scale of the surface
};

/// An island that never was mapped.
void unfoldNew(const IslandSurface& surface, const FlattenOptions& flatten,
               const RunControl& control, const std::function<void(double)>& progress,
               IslandLayout& result)
{
    FlattenAttempt best = IslandFlattener(surface.mesh, {}, flatten, control, progress).run();
    result.method = best.methods();
    result.warnings = std::move(best.report.warnings);
    result.uv = std::move(best.uv);
    for (Vec2& p : result.uv)
        p = surface.size * p;
}

} // namespace

IslandLayout relaxIsland(const Session& session, int island, std::span<const char> isChosen,
                         const RelaxOptions& options, const RunControl& control,
                         const std::function<void(double)>& progress)
{
    IslandLayout result;
    IslandSurface surface = takeIsland(session.mesh, session.islands, island);
    control.checkpoint();
    result.obstacle = obstacleOf(surface);
    if (result.obstacle != Obstacle::None)
        return result;

    std::vector<Vec2> before = layoutOf(session, surface.vertices);
    result.hadLayout = hasLayout(session, surface.vertices) && !isPoint(before);
    result.isFixed = fixedVertices(surface.vertices, isChosen);
    FlattenOptions flatten = flattenOptions(options);
    flatten.straight = pinnedLines(session, surface);
    flatten.isFixed = result.isFixed;
    const bool isAllFixed =
        !result.isFixed.empty() &&
        std::find(result.isFixed.begin(), result.isFixed.end(), 0) == result.isFixed.end();
    const bool isLeft = options.iterations == 0 || options.power == 0.0;
    if (isAllFixed || (isLeft && flatten.straight.empty()))
        result.isUnchanged = true;
    else if (!result.hadLayout && result.isFixed.empty())
        unfoldNew(surface, flatten, control, progress, result);
    else {
        result.hadLayout = true;
        windAsItLies(before, result.isFixed, surface.mesh);
        IslandRelaxer(surface, std::move(before), flatten, options, control, progress).run(result);
    }
    result.vertices = std::move(surface.vertices);
    result.triangles = std::move(surface.mesh.triangles);
    return result;
}

} // namespace unfold3d

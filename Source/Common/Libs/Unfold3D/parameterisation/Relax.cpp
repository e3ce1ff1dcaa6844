#include "Unfold3D/parameterisation/Relax.h"

#include "Unfold3D/base/FlipCheck.h"
#include "Unfold3D/parameterisation/BorderCrossings.h"
#include "Unfold3D/parameterisation/MovablePart.h"
#include "Unfold3D/parameterisation/StraightLines.h"
#include "Unfold3D/parameterisation/Untangle.h"

#include <algorithm>
#include <utility>

namespace unfold3d
{

namespace
{

/// Shares of the whole progress, and of that of an attempt.
constexpr double progressOfFirst = 0.8;
constexpr double progressOfUntangling = 0.5;

/// Moves the vertices of lines onto them, one line after the other, where that makes no more
/// flipped triangles and border crossings than there were.
void snapLines(const MovablePart& part, const Border& border, const FlattenOptions& options,
               const RunControl& control, FlattenResult& result)
{
    StraightLines lines(part.mesh, options.straight, result.report.warnings);
    if (part.isWhole())
        lines.turnAlong(result.uv);
    else
        lines.fix(part.isFixed, result.uv, result.report.warnings);
    const auto faults = [&](std::span<const Vec2> uv) {
        const int crossings = options.preventBorderCrossings
                                  ? countBorderCrossings(border, borderPositions(border, {uv}))
                                  : 0;
        return std::pair{flippedTriangles(part.corners, uv).size(), crossings};
    };
    const auto before = faults(result.uv);
    std::vector<char> isStraight(static_cast<std::size_t>(lines.count()), 0);
    for (int l = 0; l < lines.count(); ++l) {
        control.checkpoint();
        std::vector<Vec2> snapped = result.uv;
        lines.straighten(l, snapped);
        const auto after = faults(snapped);
        if (after.first > before.first || after.second > before.second)
            continue;
        result.uv = std::move(snapped);
        isStraight[static_cast<std::size_t>(l)] = 1;
    }
    StraightLines::warnOfGivenUp(lines.keep(isStraight), result.report.warnings);
}

/// One call of relax().
class Relaxing
{
public:
    Relaxing(const IslandMesh& mesh, const FlattenOptions& options, const RunControl& control,
             const std::function<void(double)>& progress)
        : mesh_(mesh), options_(options), control_(control), progress_(progress),
          part_(mesh, options.isFixed), border_(mesh)
    {
        options_.mayStartCrossing = true;
    }

    RelaxResult run(std::vector<Vec2> uv)
    {
        const bool wasTangled = !isFlipFree(part_.corners, uv);
        const bool mayCross = !options_.preventBorderCrossings && !wasTangled;
        RelaxResult best = untangleFrom(uv, 0.0, progressOfFirst);
        if (!part_.isWhole() && (best.flips > 0 || (best.report.borderCrossings > 0 && !mayCross)))
        {
            continueFixedPart(part_, uv, control_);
            RelaxResult other = untangleFrom(std::move(uv), progressOfFirst, 1.0);
            if (faults(other) < faults(best))
                best = std::move(other);
        }
        best.wasTangled = wasTangled;
        return best;
    }

private:
    static std::pair<int, int> faults(const RelaxResult& result)
    {
        return {result.flips, result.report.borderCrossings};
    }
    int crossingsOf(std::span<const Vec2> uv) const
    {
        return countBorderCrossings(border_, borderPositions(border_, {uv}));
    }
    std::function<void(double)> progressBetween(double begin, double end) const
    {
        return [this, begin, end](double fraction) { progress_(begin + fraction * (end - begin)); };
    }

    RelaxResult untangleFrom(std::vector<Vec2> uv, double begin, double end) const
    {
        if (isFlipFree(part_.corners, uv))
            return relaxFrom(std::move(uv), begin, end);
        const double middle = begin + progressOfUntangling * (end - begin);
        UntangleResult untangled =
            untangle(part_, std::move(uv), control_, progressBetween(begin, middle));
        uv = std::move(untangled.uv);
        if (!untangled.isDone)
            return settleFrom(std::move(uv));
        RelaxResult result = relaxFrom(std::move(uv), middle, end);
        result.report.method = "untangling, " + result.report.method;
        return result;
    }

    RelaxResult relaxFrom(std::vector<Vec2> uv, double begin, double end) const
    {
        FlattenResult flat =
            flatten(mesh_, std::move(uv), options_, control_, progressBetween(begin, end));
        return counted(std::move(flat));
    }

    /// Where flips are left.
    RelaxResult settleFrom(std::vector<Vec2> uv) const
    {
        FlattenResult settled{uv, {}};
        settleWithFlips(part_, settled.uv, control_);
        if (flippedTriangles(part_.corners, settled.uv).size() >
            flippedTriangles(part_.corners, uv).size())
            settled.uv = std::move(uv);
        settled.report.method = "soft energy";
        if (!options_.straight.empty())
            snapLines(part_, border_, options_, control_, settled);
        return counted(std::move(settled));
    }

    RelaxResult counted(FlattenResult flat) const
    {
        RelaxResult result;
        result.flips = static_cast<int>(flippedTriangles(part_.corners, flat.uv).size());
        result.uv = std::move(flat.uv);
        result.report = std::move(flat.report);
        result.report.borderCrossings = crossingsOf(result.uv);
        return result;
    }

    const IslandMesh& mesh_;
    FlattenOptions options_;
    const RunControl& control_;
    const std::function<void(double)>& progress_;
    const MovablePart part_;
    const Border border_;
};

} // namespace

RelaxResult relax(const IslandMesh& mesh, std::vector<Vec2> uv, const FlattenOptions& options,
                  const RunControl& control, const std::function<void(double)>& progress)
{
    return Relaxing(mesh, options, control, progress).run(std::move(uv));
}

FlattenResult straightenOnly(const IslandMesh& mesh, const std::vector<Vec2>& uv,
                             const FlattenOptions& options, const RunControl& control)
{
    const MovablePart part(mesh, options.isFixed);
    if (!isFlipFree(part.corners, uv)) {
        FlattenResult result{uv, {}};
        snapLines(part, Border(mesh), options, control, result);
        return result;
    }
    // The layout itself is what should not be distorted.
    IslandMesh present;
    for (const Vec2 p : uv)
        present.positions.push_back({p.x, p.y, 0.0});
    present.triangles = mesh.triangles;
    FlattenOptions own = options;
    own.iterations = 0;
    own.keepScale = true;
    own.mayStartCrossing = true;
    return flatten(present, uv, own, control, {});
}

} // namespace unfold3d

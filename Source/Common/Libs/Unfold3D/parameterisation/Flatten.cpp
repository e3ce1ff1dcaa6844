#include "Unfold3D/parameterisation/Flatten.h"

#include "Unfold3D/parameterisation/FreeMinimiser.h"

#include <cmath>

namespace unfold3d
{

FlattenResult flatten(const IslandMesh& mesh, std::vector<Vec2> start,
                      const FlattenOptions& options, const RunControl& control,
                      const std::function<void(double)>& progress)
{
    FlattenResult result;
    const EliminationMesh ordered(mesh);
    std::vector<Vec2> uv = ordered.toElimination(start);
    FreeMinimiser minimiser(ordered);
    StopRule rule;
    rule.promisedShare = options.iterations < 0 ? 1e-13 : std::pow(10.0, -(options.iterations + 2));
    if (options.iterations == 0) {
        result.report.energy = rescale(ordered, uv);
    } else {
        const FreeMinimiser::Outcome outcome =
            minimiser.minimise(uv, rule, control, [&](std::span<const Vec2>, double) {
                if (progress)
                    progress(0.5);
                return true;
            });
        result.report.energy = outcome.energy;
        result.report.steps = outcome.steps;
        result.report.converged = outcome.converged;
    }
    result.uv = ordered.toVertices(uv);
    return result;
}

} // namespace unfold3d

#include "Unfold3D/seams/SeamForecast.h"

#include "Unfold3D/seams/Patches.h"

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// For each patch the factor at which it keeps its size: the mean that is best for the energy, by
/// reweighting.
std::vector<double> patchLevels(const SeamMesh& mesh, const Patches& patches,
                                std::span<const double> u)
{
    constexpr int rounds = 4;
    std::vector<double> levels(at(patches.count()), 0.0);
    for (int round = 0; round < rounds; ++round) {
        std::vector<double> sums(levels.size(), 0.0);
        std::vector<double> weights(levels.size(), 0.0);
        for (int t = 0; t < mesh.triangleCount(); ++t) {
            const std::size_t patch = at(patches.ofTriangle[at(t)]);
            for (const int v : mesh.triangles[at(t)]) {
                const double weight = mesh.areas[at(t)] * strainWeight(u[at(v)] - levels[patch]);
                sums[patch] += weight * u[at(v)];
                weights[patch] += weight;
            }
        }
        for (std::size_t patch = 0; patch < levels.size(); ++patch)
            levels[patch] = weights[patch] > 0.0 ? sums[patch] / weights[patch] : 0.0;
    }
    return levels;
}

} // namespace

SeamForecaster::SeamForecaster(const SeamMesh& mesh, const RunControl& control)
    : mesh_(mesh), control_(control), factor_(mesh.positions, mesh.triangles),
      graph_(vertexGraph(mesh.triangles, mesh.vertexCount()))
{}

std::vector<double> SeamForecaster::factors(const SeamDraft& draft)
{
    ++count_;
    return factor_.solve(draft.cutVertices(), control_);
}

SeamForecast SeamForecaster::forecast(const SeamDraft& draft)
{
    const std::vector<double> u = factors(draft);
    const Patches patches = findPatches(mesh_, draft.isSeam);
    const std::vector<double> levels = patchLevels(mesh_, patches, u);

    SeamForecast result;
    result.strain.assign(u.size(), 0.0);
    result.energies.assign(at(draft.parts.count()), 4.0);
    for (int t = 0; t < mesh_.triangleCount(); ++t) {
        const double level = levels[at(patches.ofTriangle[at(t)])];
        const std::size_t part = at(draft.parts.ofVertex[at(mesh_.triangles[at(t)][0])]);
        const double share = mesh_.areas[at(t)] / (3.0 * draft.parts.areas[part]);
        for (const int v : mesh_.triangles[at(t)]) {
            result.strain[at(v)] = u[at(v)] - level;
            result.energies[part] += share * strainExcess(u[at(v)] - level);
        }
    }
    return result;
}

} // namespace unfold3d

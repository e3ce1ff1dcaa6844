#include "Unfold3D/seams/SeamForecast.h"

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// For each part the factor at which it keeps its size: the mean that is best for the energy, by
/// reweighting.
std::vector<double> partLevels(const SeamMesh& mesh, const MeshParts& parts,
                               std::span<const double> u)
{
    constexpr int rounds = 4;
    std::vector<double> levels(at(parts.count()), 0.0);
    for (int round = 0; round < rounds; ++round) {
        std::vector<double> sums(levels.size(), 0.0);
        std::vector<double> weights(levels.size(), 0.0);
        for (int t = 0; t < mesh.triangleCount(); ++t) {
            const std::size_t part = at(parts.ofTriangle[at(t)]);
            for (const int v : mesh.triangles[at(t)]) {
                const double weight = mesh.areas[at(t)] * strainWeight(u[at(v)] - levels[part]);
                sums[part] += weight * u[at(v)];
                weights[part] += weight;
            }
        }
        for (std::size_t part = 0; part < levels.size(); ++part)
            levels[part] = weights[part] > 0.0 ? sums[part] / weights[part] : 0.0;
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
    return factor_.solve(draft.cutVertices(), control_);
}

SeamForecast SeamForecaster::forecast(const SeamDraft& draft)
{
    const std::vector<double> u = factors(draft);
    const MeshParts& parts = draft.parts;
    const std::vector<double> levels = partLevels(mesh_, parts, u);

    SeamForecast result;
    result.strain.assign(u.size(), 0.0);
    result.energies.assign(at(parts.count()), 4.0);
    for (int t = 0; t < mesh_.triangleCount(); ++t) {
        const std::size_t part = at(parts.ofTriangle[at(t)]);
        const double share = mesh_.areas[at(t)] / (3.0 * parts.areas[part]);
        for (const int v : mesh_.triangles[at(t)]) {
            result.strain[at(v)] = u[at(v)] - levels[part];
            result.energies[part] += share * strainExcess(u[at(v)] - levels[part]);
        }
    }
    return result;
}

} // namespace unfold3d

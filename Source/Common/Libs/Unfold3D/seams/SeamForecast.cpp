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
std::vector<double> partLevels(const PartShares& shares, int partCount, std::span<const double> u)
{
    constexpr int rounds = 4;
    std::vector<double> levels(at(partCount), 0.0);
    for (int round = 0; round < rounds; ++round) {
        std::vector<double> sums(levels.size(), 0.0);
        std::vector<double> weights(levels.size(), 0.0);
        for (const auto& [vertex, part, area] : shares.shares) {
            const double weight = area * strainWeight(u[at(vertex)] - levels[at(part)]);
            sums[at(part)] += weight * u[at(vertex)];
            weights[at(part)] += weight;
        }
        for (std::size_t part = 0; part < levels.size(); ++part)
            levels[part] = weights[part] > 0.0 ? sums[part] / weights[part] : 0.0;
    }
    return levels;
}

} // namespace

SeamForecaster::SeamForecaster(const SeamMesh& mesh, const CoarseMesh& coarse,
                               const RunControl& control)
    : mesh_(mesh), control_(control), coarse_(coarse),
      factor_(coarse_.positions, coarse_.triangles, control),
      graph_(vertexGraph(coarse_.triangles, coarse_.vertexCount()))
{}

std::vector<double> SeamForecaster::factors(const SeamDraft& draft)
{
    const std::vector<char> isCut = draft.cutVertices();
    std::vector<char> isCutHere(coarse_.positions.size(), 0);
    for (std::size_t v = 0; v < isCut.size(); ++v)
        if (isCut[v])
            isCutHere[at(coarse_.coarseOf[v])] = 1;
    return factor_.solve(isCutHere, control_);
}

SeamForecast SeamForecaster::forecast(const SeamDraft& draft, const PartShares& shares)
{
    const std::vector<double> u = factors(draft);
    const MeshParts& parts = draft.parts;
    const std::vector<double> levels = partLevels(shares, parts.count(), u);

    SeamForecast result;
    result.strain.assign(u.size(), 0.0);
    result.energies.assign(at(parts.count()), 4.0);
    for (const auto& [vertex, part, area] : shares.shares)
        result.energies[at(part)] +=
            area / parts.areas[at(part)] * strainExcess(u[at(vertex)] - levels[at(part)]);
    for (std::size_t v = 0; v < u.size(); ++v)
        result.strain[v] = u[v] - levels[at(parts.ofVertex[at(coarse_.vertexOf[v])])];
    return result;
}

std::vector<FactorPeak> SeamForecaster::peaksOf(std::span<const double> values) const
{
    std::vector<FactorPeak> peaks = factorPeaks(graph_, values, factor_.areas());
    for (FactorPeak& peak : peaks)
        peak.vertex = vertexOf(peak.vertex);
    return peaks;
}

} // namespace unfold3d

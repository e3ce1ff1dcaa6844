#include "Unfold3D/seams/LimbEnds.h"

#include "Unfold3D/seams/FactorPeaks.h"

namespace unfold3d
{

namespace
{

/// A flat map shrinks the tip of a limb at least as much; logarithm.
constexpr double tipFactor = -0.4;
/// Tips of a part to look at, farthest out first.
constexpr int mostTips = 24;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

} // namespace

std::vector<int> limbEnds(const SeamDraft& draft, SeamForecaster& forecaster)
{
    std::vector<int> ends;
    std::vector<int> countOfPart(at(draft.parts.count()), 0);
    for (int v = 0; v < draft.mesh.vertexCount(); ++v)
        if (draft.mesh.isOnBorder[at(v)]) {
            ends.push_back(v);
            countOfPart[at(draft.parts.ofVertex[at(v)])] = 1;
        }
    for (const FactorPeak& peak : forecaster.peaksOf(forecaster.factors(draft)))
        if (peak.strain < tipFactor &&
            ++countOfPart[at(draft.parts.ofVertex[at(peak.vertex)])] <= mostTips)
            ends.push_back(peak.vertex);
    for (int v = 0; v < draft.mesh.vertexCount(); ++v)
        if (countOfPart[at(draft.parts.ofVertex[at(v)])]++ == 0)
            ends.push_back(v);
    return ends;
}

} // namespace unfold3d

#include "Unfold3D/seams/ClosedParts.h"

#include "Unfold3D/seams/CheapestPaths.h"
#include "Unfold3D/seams/FactorPeaks.h"

#include <algorithm>
#include <span>
#include <vector>

namespace unfold3d
{

namespace
{

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// The places of each part that stick out most, up to two [part].
std::vector<std::vector<int>> outermostVertices(const SeamDraft& draft, SeamForecaster& forecaster)
{
    std::vector<std::vector<int>> ends(at(draft.parts.count()));
    for (const FactorPeak& peak : forecaster.peaksOf(forecaster.factors(draft))) {
        std::vector<int>& ofPart = ends[at(draft.parts.ofVertex[at(peak.vertex)])];
        if (ofPart.size() < 2 && peak.strain < 0.0)
            ofPart.push_back(peak.vertex);
    }
    // An even sphere has no such places: any vertex will do for one end.
    for (int v = 0; v < draft.mesh.vertexCount(); ++v) {
        std::vector<int>& ofPart = ends[at(draft.parts.ofVertex[at(v)])];
        if (ofPart.empty())
            ofPart.push_back(v);
    }
    return ends;
}

} // namespace

void openClosedParts(SeamDraft& draft, SeamForecaster& forecaster, const RunControl& control)
{
    std::vector<char> isOpen(at(draft.parts.count()), 0);
    const std::vector<char> isCut = draft.cutVertices();
    for (int t = 0; t < draft.mesh.triangleCount(); ++t)
        for (const int v : draft.mesh.triangles[at(t)])
            if (isCut[at(v)])
                isOpen[at(draft.parts.ofTriangle[at(t)])] = 1;
    if (std::find(isOpen.begin(), isOpen.end(), 0) == isOpen.end())
        return;

    const std::vector<std::vector<int>> ends = outermostVertices(draft, forecaster);
    CheapestPaths paths(draft.mesh, draft.pathCosts, draft.isSeam);
    for (std::size_t part = 0; part < ends.size(); ++part) {
        if (isOpen[part])
            continue;
        paths.search(std::span(ends[part]).first(1), control);
        const int farEnd = ends[part].size() > 1 ? ends[part][1] : paths.reached().back();
        for (const int e : paths.pathTo(farEnd))
            draft.isSeam[at(e)] = 1;
    }
}

} // namespace unfold3d

#include "Unfold3D/seams/ClosedParts.h"

#include "Unfold3D/seams/CheapestPaths.h"
#include "Unfold3D/seams/FactorPeaks.h"

#include <algorithm>
#include <span>
#include <utility>
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

/// A cut along one edge opens nothing, since its sides meet at both ends. Goes on from one of them
/// along the cheapest edge that leads elsewhere than back to the other.
void goOn(int end, const SeamDraft& draft, std::vector<int>& path)
{
    const auto [a, b] = draft.mesh.verticesOf(path.back());
    const int other = a == end ? b : a;
    int next = -1;
    for (const Spoke& spoke : draft.mesh.spokes[end])
        if (spoke.vertex != other &&
            (next < 0 || std::pair(draft.pathCosts[at(spoke.edge)], spoke.edge) <
                             std::pair(draft.pathCosts[at(next)], next)))
            next = spoke.edge;
    if (next >= 0)
        path.push_back(next);
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
        std::vector<int> path = paths.pathTo(farEnd);
        if (path.size() == 1)
            goOn(farEnd, draft, path);
        for (const int e : path)
            draft.isSeam[at(e)] = 1;
    }
}

} // namespace unfold3d

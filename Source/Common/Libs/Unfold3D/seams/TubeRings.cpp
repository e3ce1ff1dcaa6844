#include "Unfold3D/seams/TubeRings.h"

#include "Unfold3D/seams/CheapestRing.h"
#include "Unfold3D/seams/Tubes.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace unfold3d
{

namespace
{

/// How far a ring may slide from the end of the tube to where it is cheapest: this share of the
/// girth, and of the length.
constexpr double slideByGirth = 0.25;
constexpr double slideByLength = 0.3;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// The vertices of a band beside a neighbour.
std::vector<int> verticesTowards(const SeamMesh& mesh, const DistanceBands& bands, int band,
                                 int neighbour)
{
    std::vector<int> vertices;
    for (const int v : bands.vertices[band]) {
        const bool isBeside =
            std::any_of(mesh.spokes[v].begin(), mesh.spokes[v].end(), [&](const Spoke& spoke) {
                return bands.bandOfVertex[at(spoke.vertex)] == neighbour;
            });
        if (isBeside)
            vertices.push_back(v);
    }
    return vertices;
}

class RingLayer
{
public:
    RingLayer(SeamDraft& draft, const DistanceBands& bands, const TubeRingOptions& options,
              const RunControl& control)
        : draft_(draft), bands_(bands), options_(options), control_(control),
          costs_(draft.pathCosts)
    {
        for (std::size_t e = 0; e < costs_.size(); ++e)
            if (draft.isSeam[e])
                costs_[e] = 1;
    }

    void cutOff(const Tube& tube)
    {
        const std::size_t count = sleeveSize(tube);
        const std::span<const int> all(tube.bands);
        if (needsRing(tube.start))
            layRing(all.first(count));
        if (needsRing(tube.end))
            layRing(all.last(count));
    }

private:
    std::size_t sleeveSize(const Tube& tube) const
    {
        const double slide = std::min(slideByGirth * tube.girth, slideByLength * tube.length);
        const double count = std::ceil(slide / bands_.widths[at(tube.bands.front())]);
        return std::clamp<std::size_t>(static_cast<std::size_t>(count), 1, tube.bands.size());
    }

    bool needsRing(Tube::End end) const
    {
        return end == Tube::Body || (end == Tube::Cap && options_.cutCaps);
    }

    /// The neighbours of the first and the last band that aren't in the sleeve.
    std::array<int, 2> bandsBeside(std::span<const int> sleeve) const
    {
        const std::vector<int>& first = bands_.neighbours[at(sleeve.front())];
        const std::vector<int>& last = bands_.neighbours[at(sleeve.back())];
        if (sleeve.size() == 1)
            return {first[0], first[1]};
        return {first[0] == sleeve[1] ? first[1] : first[0],
                last[0] == sleeve[sleeve.size() - 2] ? last[1] : last[0]};
    }

    void layRing(std::span<const int> sleeve)
    {
        std::vector<int> vertices;
        for (const int band : sleeve)
            vertices.insert(vertices.end(), bands_.vertices[band].begin(),
                            bands_.vertices[band].end());
        const auto [from, to] = bandsBeside(sleeve);
        const std::vector<int> near = verticesTowards(draft_.mesh, bands_, sleeve.front(), from);
        const std::vector<int> far = verticesTowards(draft_.mesh, bands_, sleeve.back(), to);
        for (const int e : cheapestRing(draft_.mesh, costs_, vertices, near, far, control_)) {
            draft_.isSeam[at(e)] = 1;
            costs_[at(e)] = 1;
        }
    }

    SeamDraft& draft_;
    const DistanceBands& bands_;
    const TubeRingOptions& options_;
    const RunControl& control_;
    std::vector<PathCost> costs_; ///< [edge] what is a seam already costs next to nothing
};

} // namespace

void layTubeRings(SeamDraft& draft, const DistanceBands& bands, const TubeRingOptions& options,
                  const RunControl& control)
{
    RingLayer layer(draft, bands, options, control);
    for (const Tube& tube : findTubes(bands, options.leastLength))
        layer.cutOff(tube);
    draft.parts = findParts(draft.mesh, draft.isSeam);
}

} // namespace unfold3d

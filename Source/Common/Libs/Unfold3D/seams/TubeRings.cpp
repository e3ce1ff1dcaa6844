#include "Unfold3D/seams/TubeRings.h"

#include "Unfold3D/seams/CheapestRing.h"
#include "Unfold3D/seams/Tubes.h"

#include <algorithm>
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
        const std::vector<int>& besideFirst = bands_.neighbours[at(tube.bands.front())];
        const int slide = bandsToSlide(tube);
        if (needsRing(tube.start))
            layRing(sleeveAt({tube.bands.rbegin(), tube.bands.rend()}, besideFirst.back(), slide));
        if (needsRing(tube.end))
            layRing(sleeveAt(tube.bands, besideFirst.front(), slide));
    }

private:
    /// Bands around an end of a tube for a ring to lie in, and those that bound them.
    struct Sleeve
    {
        int inside;
        std::vector<int> bands; ///< one behind the other
        int outside;
    };

    int bandsToSlide(const Tube& tube) const
    {
        const double slide = std::min(slideByGirth * tube.girth, slideByLength * tube.length);
        const double count = std::ceil(slide / bands_.widths[at(tube.bands.front())]);
        return std::clamp(static_cast<int>(count), 1, static_cast<int>(tube.bands.size()));
    }

    bool needsRing(Tube::End end) const
    {
        return end == Tube::Body || (end == Tube::Cap && options_.cutCaps);
    }

    /// Around the last of some bands, at most `slide` of them and as many beyond.
    ///
    /// before  what comes before the first of the bands
    Sleeve sleeveAt(const std::vector<int>& bands, int before, int slide) const
    {
        Sleeve sleeve;
        sleeve.bands.assign(bands.end() - slide, bands.end());
        const auto inside = static_cast<int>(bands.size()) - slide - 1;
        const int beyondFirst =
            slide > 1 ? bands_.beyond(sleeve.bands[1], sleeve.bands[0]) : before;
        sleeve.inside = inside >= 0 ? bands[at(inside)] : beyondFirst;
        int from = slide > 1 ? sleeve.bands[at(slide - 2)] : sleeve.inside;
        sleeve.outside = bands_.beyond(from, sleeve.bands.back());
        for (int i = 0; i < slide && bands_.isLink(sleeve.outside); ++i) {
            from = sleeve.bands.back();
            sleeve.bands.push_back(sleeve.outside);
            sleeve.outside = bands_.beyond(from, sleeve.outside);
        }
        return sleeve;
    }

    void layRing(const Sleeve& sleeve)
    {
        std::vector<int> vertices;
        for (const int band : sleeve.bands)
            vertices.insert(vertices.end(), bands_.vertices[band].begin(),
                            bands_.vertices[band].end());
        const std::vector<int> near =
            verticesTowards(draft_.mesh, bands_, sleeve.bands.front(), sleeve.inside);
        const std::vector<int> far =
            verticesTowards(draft_.mesh, bands_, sleeve.bands.back(), sleeve.outside);
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

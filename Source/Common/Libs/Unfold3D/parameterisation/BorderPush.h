#pragma once

#include "Unfold3D/linear/VertexGraph.h"
#include "Unfold3D/parameterisation/Border.h"
#include "Unfold3D/parameterisation/BorderGap.h"
#include "Unfold3D/parameterisation/Spring.h"

#include <span>
#include <vector>

namespace unfold3d
{

/// Pushes pieces of the border apart that lie on the surface beyond another piece: each point that
/// another part of the island covers goes back over the nearest edge of the piece that crosses its
/// own, and a little farther. Tangles for which that is no way out are left; an exact test tells.
///
/// Unlike BorderBarrier it takes borders that cross, and is soft: points may stay where they are
/// when much holds them.
///
/// All positions are [point], as borderPositions gives them.
class BorderPush
{
public:
    /// clearance  how far beyond an edge a point is pushed; less where the way along the border
    ///            to the edge is short
    BorderPush(const Border& border, double clearance);

    const Border& border() const { return border_; }

    /// Points that another part of the island covers.
    int countCovered(std::span<const Vec2> positions) const;

    /// Chooses the edges over which points are pushed from here on. Points that are free again are
    /// braked, so that they stay so.
    ///
    /// work  what closing the gap of such a point shall cost, doubled
    ///
    /// Near linear in the points, but for the points of each covered piece times the edges of those
    /// that cross it.
    void aim(std::span<const Vec2> positions, double work);

    /// The energy of the present aim; brakes have none.
    double energy(std::span<const Vec2> positions) const;
    void addSprings(std::span<const Vec2> positions, std::vector<Spring>& springs) const;

    /// Adds the pairs of vertices that springs may join when points slide to neighbouring edges.
    void addPairs(std::vector<NodePair>& pairs) const;

private:
    struct Push
    {
        BorderGap gap; ///< its normal points out of the covering part
        double clearance;
        double work = 0.0; ///< of the brake of a free point
    };
    struct CoveredPieces;

    void pushOut(std::span<const Vec2> positions, const CoveredPieces& pieces, int point);
    double clearanceOf(int point, int edge) const;
    double stiffnessOf(const Push& push) const;
    double shortfall(std::span<const Vec2> positions, const Push& push) const;

    const Border& border_;
    double clearance_;
    std::vector<double> stiffness_; ///< [point] 0 where it never was covered
    std::vector<Push> pushes_;
};

} // namespace unfold3d

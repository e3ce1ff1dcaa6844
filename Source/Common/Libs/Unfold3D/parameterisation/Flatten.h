#pragma once

#include "Unfold3D/base/IslandMesh.h"
#include "Unfold3D/base/LayoutWarning.h"
#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/base/Vec.h"

#include <functional>
#include <string>
#include <vector>

namespace unfold3d
{

/// Vertices that shall end on one straight line along an axis: with one common v when it is
/// horizontal, with one common u otherwise.
struct StraightLine
{
    bool horizontal = true;
    std::vector<int> vertices;
};

struct FlattenOptions
{
    /// How far to go. n from 1 on: to the first step of the minimisation that promises less than
    /// 10^-(n+2) of the energy, and less than a hundredth of its excess over the 4 of an isometric
    /// layout; 1 looks finished, 3 is so for any use. 0: no minimisation, the start at its best
    /// scale; straight lines still take the steps that draw them straight. Any negative number:
    /// until rounding errors stop it.
    int iterations = 1;
    /// Keep the border of the island from crossing itself, at the price of some distortion.
    bool preventBorderCrossings = true;
    /// Least distance of two pieces of the border from each other, as a share of the side of a
    /// square of the island's area. Only looked at when border crossings are prevented, and only
    /// where the shape of the island leaves room.
    double roomSpace = 0.0;
    std::vector<StraightLine> straight;

    /// Share of lengths in what is minimised, above 0 to 1; the rest are angles.
    double lengths = 1.0;
    /// [vertex] vertices that stay where they are in the start; empty when none does. With some of
    /// them fixed the scale of the start counts: it should lie in a layout of area 1.
    std::vector<char> isFixed;
    /// An order of elimination for the vertices, when one is known; empty: it is looked for.
    std::vector<int> eliminationOrder;
    /// Without minimisation, leave the start at its scale.
    bool keepScale = false;
    /// Take a start whose border crosses itself, and let it cross no more often.
    bool mayStartCrossing = false;
};

struct FlattenReport
{
    double energy = 0.0;      ///< symmetric Dirichlet, mean over the area; 4 is isometric
    int steps = 0;            ///< factorisations
    bool converged = false;   ///< the end that the options ask for was reached
    int borderCrossings = -1; ///< of the result, by an exact test; -1 when not counted
    std::string method;       ///< which methods served, for a log
    std::vector<LayoutWarning> warnings;

    /// When the end was not reached, and the energy is higher than this, another start may do
    /// better.
    static constexpr double hopelessEnergy = 8.0;
    bool isHopeful() const { return converged || energy < hopelessEnergy; }
};

struct FlattenResult
{
    std::vector<Vec2> uv; ///< [vertex]
    FlattenReport report;
};

/// Lays an island into the plane with as little distortion as possible: minimises the symmetric
/// Dirichlet energy from a start without flipped triangles, and flips none on the way. The result
/// has the scale of the surface in space.
///
/// start     [vertex]  every triangle of positive area (exactly, however thin), but for those of
///                     which nothing moves, the border without crossings where they are prevented;
///                     what doesn't hold that comes back as it is with a warning
/// progress            called with 0 to 1 as the work goes on; may be empty
///
/// One thread, the same bits on every run. Throws Stopped when `control` asks for it, at most one
/// elimination of a dense front later. Time is a few sparse factorisations (see the report's
/// steps).
FlattenResult flatten(const IslandMesh& mesh, std::vector<Vec2> start,
                      const FlattenOptions& options, const RunControl& control,
                      const std::function<void(double)>& progress);

} // namespace unfold3d

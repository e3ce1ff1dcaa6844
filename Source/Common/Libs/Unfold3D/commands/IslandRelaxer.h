#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/commands/IslandLayout.h"
#include "Unfold3D/commands/RelaxIsland.h"
#include "Unfold3D/layout/LayoutFrame.h"
#include "Unfold3D/mesh/IslandSurface.h"
#include "Unfold3D/parameterisation/Border.h"
#include "Unfold3D/parameterisation/Flatten.h"
#include "Unfold3D/parameterisation/Relax.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace unfold3d
{

/// Relaxes one island that can be laid flat, from the UVs it has and back in UV.
class IslandRelaxer
{
public:
    /// A single fixed vertex holds neither shape nor turn: the island is relaxed as if it were
    /// free, then moved to where that vertex was.
    ///
    /// surface   wound as it lies; kept by reference, as are options, control and progress
    /// before    [vertex of the surface]  not all in one point
    /// flatten   what `options` ask for, and with it lines and fixed vertices of the surface
    IslandRelaxer(const IslandSurface& surface, std::vector<Vec2> before, FlattenOptions flatten,
                  const RelaxOptions& options, const RunControl& control,
                  const std::function<void(double)>& progress);

    /// Sets uv, isUnchanged, method and warnings of `result`.
    void run(IslandLayout& result);

private:
    bool isWhole() const { return flatten_.isFixed.empty(); }
    bool goesNowhere() const { return options_.iterations == 0 || options_.power == 0.0; }
    int crossingsOf(std::span<const Vec2> uv) const;
    std::size_t flipsOnFloats(std::span<const Vec2> uv) const;
    bool isAllowed(std::span<const Vec2> uv) const;
    bool isSound(const RelaxResult& relaxed) const;
    std::vector<Vec2> relaxed(std::string& method, std::vector<LayoutWarning>& warnings);
    void layOutAnew(RelaxResult& relaxed);
    double scaleOf(std::span<const Vec2> uv) const;
    std::vector<Vec2> placed(std::vector<Vec2> uv) const;
    std::vector<Vec2> withPinsStraight(std::vector<LayoutWarning>& warnings);
    void warnOfRest(std::span<const Vec2> uv, std::vector<LayoutWarning>& warnings) const;

    const IslandMesh& mesh_;
    const std::vector<Vec2> before_;
    const int anchor_;                     ///< the only fixed vertex; -1 when none or several are
    const std::vector<std::uint8_t> held_; ///< [vertex] what rounding must not move
    const FlattenOptions flatten_;
    const RelaxOptions& options_;
    const RunControl& control_;
    const std::function<void(double)>& progress_;
    const Border border_;
    const LayoutFrame frame_;
    const std::size_t flipsBefore_;
    const int crossingsBefore_;
    std::vector<Vec2> inside_; ///< what came in, in the scale of the surface
};

} // namespace unfold3d

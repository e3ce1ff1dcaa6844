#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/parameterisation/Flatten.h"
#include "Unfold3D/start/FlatStart.h"

#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace unfold3d
{

/// One way from start to end.
struct FlattenAttempt
{
    FlatStart::Method start;
    std::vector<Vec2> uv; ///< empty when it failed
    FlattenReport report;

    bool isGood() const;
    bool isBetterThan(const FlattenAttempt& other) const;
    /// Which methods served, for a log.
    std::string methods() const;
};

/// Flattens an island from one start after the other until a result is good, and returns the best.
class IslandFlattener
{
public:
    /// All are kept by reference. The result is turned as the old layout was; that may be empty.
    IslandFlattener(const IslandMesh& mesh, std::span<const Vec2> oldLayout, FlattenOptions options,
                    const RunControl& control, const std::function<void(double)>& progress)
        : mesh_(mesh), oldLayout_(oldLayout), options_(std::move(options)), control_(control),
          progress_(progress), starts_(mesh, control)
    {}

    /// Why it can't be done; with None there always is a result.
    Obstacle obstacle() const { return starts_.obstacle(); }

    /// No triangle is flipped in it.
    FlattenAttempt run();

private:
    FlattenAttempt flattenFrom(FlatStart& start);
    FlattenAttempt settleFor(FlatStart start) const;

    const IslandMesh& mesh_;
    std::span<const Vec2> oldLayout_;
    FlattenOptions options_;
    const RunControl& control_;
    const std::function<void(double)>& progress_;
    FlatStartFinder starts_;
    double done_ = 0.0; ///< progress
};

} // namespace unfold3d

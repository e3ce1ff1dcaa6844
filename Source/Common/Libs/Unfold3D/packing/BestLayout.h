#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/packing/Piece.h"
#include "Unfold3D/packing/Sheet.h"
#include "Unfold3D/packing/TimeLimit.h"

#include <string>
#include <vector>

namespace unfold3d
{

struct FoundLayout
{
    Layout layout;
    std::string method; ///< what found it, for a log
};

/// The largest layout of those that were found so far. Each is tested exactly before it counts, so
/// at any moment this is a result.
class BestLayout
{
public:
    /// maxScale  no layout is larger
    /// time      of the search; counts once there is a layout
    BestLayout(const std::vector<Piece>& pieces, const Sheet& sheet, double maxScale,
               TimeLimit& time, RunControl& control)
        : pieces_(pieces), sheet_(sheet), maxScale_(maxScale), time_(time), control_(control)
    {}

    bool exists() const { return !best_.layout.placements.empty(); }
    double scale() const { return best_.layout.scale; }
    bool isAtBound() const { return exists() && scale() >= maxScale_; }
    const FoundLayout& found() const { return best_; }

    /// Takes a layout that is larger and passes the test.
    void offer(const Layout& layout, const char* method);

    /// The same for the layout pulled together, which makes it larger as a rule.
    void offerSettled(const Layout& layout, const char* method);

private:
    const std::vector<Piece>& pieces_;
    const Sheet& sheet_;
    double maxScale_;
    TimeLimit& time_;
    RunControl& control_;
    FoundLayout best_;
};

} // namespace unfold3d

#pragma once

#include "Unfold3D/base/RunControl.h"
#include "Unfold3D/packing/Placer.h"

#include <functional>
#include <optional>
#include <vector>

namespace unfold3d
{

/// Where a search begins.
struct SearchStart
{
    double scale = 1.0; ///< likely to be near the largest
    /// Orders that are tried at each scale, as weights [piece]; at least one.
    std::vector<std::vector<double>> orders;
};

/// The search for the largest layout of a placer.
///
/// Whether a placer succeeds isn't monotone in the scale. So a bisection finds a first layout, and
/// a climb from there tries larger scales with other orders: disturbed copies of the one that laid
/// most at that scale, whether it laid all or not.
class ScaleSearch
{
public:
    /// Is told each layout that is larger than those before.
    using Found = std::function<void(const Layout&)>;

    /// maxScale  no layout is larger
    ScaleSearch(Placer& placer, double maxScale, SearchStart start, RunControl& control,
                Found found);

    /// Finds a first layout by bisection. False when there is none at any scale worth naming.
    bool start();

    /// Looks for a layout at the largest scale itself, with `orders` disturbed orders beyond the
    /// first ones.
    bool tryLargest(int orders);

    /// Tries `orders` more orders at larger scales. How the tries are split over calls doesn't
    /// matter as long as each is a multiple of `batchSize`.
    void climb(int orders);

    const std::optional<Layout>& best() const { return best_; }
    /// The order that led to the best layout, then the others of the start.
    std::vector<std::vector<double>> bestOrders() const;

    /// Orders that are tried side by side. Fixed, so that no result depends on the threads.
    static constexpr int batchSize = 4;

private:
    using Weights = std::vector<double>;

    /// The order to disturb.
    struct Parent
    {
        double scale = 0.0; ///< at which it was tried
        double placedArea = 0.0;
        Weights weights;
        int failedBatches = 0; ///< since it became the parent
    };

    void stepUp();
    bool stepDown();
    void bisect();
    bool tryAt(double scale, const std::vector<Weights>& orders);
    void aimAt(double scale);
    std::vector<Weights> nextBatch(int count);

    Placer& placer_;
    const double maxScale_;
    const SearchStart start_;
    RunControl& control_;
    const Found found_;
    Weights bestOrder_;
    std::optional<Layout> best_;
    Parent parent_;
    double failed_;     ///< the least scale above the best that failed
    double climb_;      ///< by what share the next climb is to be larger
    int mutations_ = 0; ///< made so far
};

} // namespace unfold3d

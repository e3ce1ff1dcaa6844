#include "Unfold3D/packing/ScaleSearch.h"

#include "Unfold3D/packing/LayOrder.h"

#include <algorithm>
#include <array>
#include <tbb/parallel_for.h>

namespace unfold3d
{

namespace
{

constexpr double stepDown = 0.93;
/// Below this share of the bound a layout is of no use.
constexpr double leastScale = 1e-6;
/// Ratio of a scale that fails to one that succeeds at which the bisection ends.
constexpr double closeEnough = 1.004;
constexpr double firstClimb = 0.02;
constexpr double leastClimb = 0.0015;
constexpr std::array<double, 3> strengths{0.08, 0.25, 0.6};

} // namespace

ScaleSearch::ScaleSearch(Placer& placer, double maxScale, const RunControl& control)
    : placer_(placer), maxScale_(maxScale), control_(control), orders_(placer.goodOrders()),
      bestOrder_(orders_.front()), failed_(maxScale * closeEnough), climb_(firstClimb)
{}

bool ScaleSearch::tryAt(double scale, const std::vector<Weights>& orders)
{
    control_.checkpoint();
    if (!placer_.setScale(scale))
        return false;
    std::vector<std::optional<Layout>> found(orders.size());
    tbb::parallel_for(std::size_t{0}, orders.size(),
                      [&](std::size_t i) { found[i] = placer_.layOut(orders[i]); });
    for (std::size_t i = 0; i < orders.size(); ++i)
        if (found[i]) {
            best_ = std::move(found[i]);
            bestOrder_ = orders[i];
            return true;
        }
    return false;
}

bool ScaleSearch::bracket()
{
    double down = stepDown;
    for (double scale = maxScale_; scale > leastScale * maxScale_; scale *= down) {
        if (tryAt(scale, orders_))
            return true;
        failed_ = scale;
        down *= 0.98; // longer steps the farther it goes
    }
    return false;
}

void ScaleSearch::bisect()
{
    while (failed_ > closeEnough * best_->scale) {
        const double scale = 0.5 * (failed_ + best_->scale);
        if (!tryAt(scale, orders_))
            failed_ = scale;
    }
}

bool ScaleSearch::start()
{
    if (!bracket())
        return false;
    bisect();
    return true;
}

std::vector<ScaleSearch::Weights> ScaleSearch::nextBatch(int count)
{
    std::vector<Weights> batch;
    for (int i = 0; i < std::min(count, batchSize); ++i) {
        const int number = mutations_++;
        const double strength = strengths[static_cast<std::size_t>(number) % strengths.size()];
        // A part starts from one of the good orders, so that one bad choice isn't kept for ever.
        const Weights& parent = number % 4 == 3
                                    ? orders_[static_cast<std::size_t>(number / 4) % orders_.size()]
                                    : bestOrder_;
        batch.push_back(mutated(parent, strength, static_cast<std::uint64_t>(number) + 1));
    }
    return batch;
}

bool ScaleSearch::tryLargest(int orders)
{
    if (tryAt(maxScale_, orders_))
        return true;
    for (int tried = 0; tried < orders; tried += batchSize)
        if (tryAt(maxScale_, nextBatch(orders - tried)))
            return true;
    return false;
}

void ScaleSearch::climb(int orders)
{
    for (int tried = 0; tried < orders; tried += batchSize) {
        const double scale = std::min(maxScale_, (1.0 + climb_) * best_->scale);
        if (scale <= best_->scale)
            return;
        if (!tryAt(scale, nextBatch(orders - tried)))
            climb_ = std::max(leastClimb, 0.5 * climb_);
    }
}

} // namespace unfold3d

#include "Unfold3D/packing/ScaleSearch.h"

#include "Unfold3D/packing/LayOrder.h"

#include <algorithm>
#include <array>
#include <tbb/parallel_for.h>

namespace unfold3d
{

namespace
{

/// Share of the command at which the search ends, and of the way to there that a try takes.
constexpr double searchDone = 0.95;
constexpr double shareOfTry = 0.03;
/// Ratio of neighbouring scales on the way to the first layout, and by what it grows with each
/// step.
constexpr double firstStep = 1.03;
constexpr double stepGrowth = 1.03;
/// Below this share of the bound a layout is of no use.
constexpr double leastScale = 1e-6;
/// Ratio of a scale that fails to one that succeeds at which the bisection ends.
constexpr double closeEnough = 1.004;
constexpr double firstClimb = 0.02;
constexpr double leastClimb = 0.0015;
/// A scale at which so many batches got no farther is too large for now.
constexpr int patience = 2;
constexpr std::array<double, 3> strengths{0.08, 0.25, 0.6};

} // namespace

ScaleSearch::ScaleSearch(Placer& placer, double maxScale, SearchStart start, RunControl& control,
                         Found found)
    : placer_(placer), maxScale_(maxScale), start_(std::move(start)), control_(control),
      found_(std::move(found)), bestOrder_(start_.orders.front()), failed_(maxScale * closeEnough),
      climb_(firstClimb)
{}

bool ScaleSearch::tryAt(double scale, const std::vector<Weights>& orders)
{
    control_.checkpoint();
    // Nobody knows how many tries there will be: each goes a part of the way that is left.
    control_.approach(searchDone, shareOfTry);
    if (!placer_.setScale(scale))
        return false;
    std::vector<Attempt> attempts(orders.size());
    tbb::parallel_for(std::size_t{0}, orders.size(),
                      [&](std::size_t i) { attempts[i] = placer_.layOut(orders[i]); });
    for (std::size_t i = 0; i < orders.size(); ++i) {
        if (attempts[i].layout) {
            best_ = std::move(attempts[i].layout);
            bestOrder_ = orders[i];
            found_(*best_);
            return true;
        }
        if (scale == parent_.scale && attempts[i].placedArea > parent_.placedArea)
            parent_ = {scale, attempts[i].placedArea, orders[i], 0};
    }
    return false;
}

void ScaleSearch::stepUp()
{
    double step = firstStep;
    while (best_->scale < maxScale_) {
        const double scale = std::min(maxScale_, step * best_->scale);
        if (!tryAt(scale, start_.orders)) {
            failed_ = scale;
            return;
        }
        step *= stepGrowth;
    }
}

bool ScaleSearch::stepDown()
{
    double step = firstStep;
    for (double scale = failed_ / step; scale > leastScale * maxScale_; scale /= step) {
        if (tryAt(scale, start_.orders))
            return true;
        failed_ = scale;
        step *= stepGrowth;
    }
    return false;
}

void ScaleSearch::bisect()
{
    while (failed_ > closeEnough * best_->scale) {
        const double scale = 0.5 * (failed_ + best_->scale);
        if (!tryAt(scale, start_.orders))
            failed_ = scale;
    }
}

bool ScaleSearch::start()
{
    const double first = std::min(start_.scale, maxScale_);
    if (tryAt(first, start_.orders)) {
        stepUp();
    } else {
        failed_ = first;
        if (!stepDown())
            return false;
    }
    bisect();
    return true;
}

std::vector<ScaleSearch::Weights> ScaleSearch::bestOrders() const
{
    std::vector<Weights> orders{bestOrder_};
    for (const Weights& order : start_.orders)
        if (order != bestOrder_)
            orders.push_back(order);
    return orders;
}

/// From now on the orders that get farthest at this scale are disturbed further.
void ScaleSearch::aimAt(double scale)
{
    if (parent_.scale != scale)
        parent_ = {scale, 0.0, best_ ? bestOrder_ : start_.orders.front(), 0};
}

std::vector<ScaleSearch::Weights> ScaleSearch::nextBatch(int count)
{
    const std::vector<Weights>& first = start_.orders;
    std::vector<Weights> batch;
    for (int i = 0; i < std::min(count, batchSize); ++i) {
        const int number = mutations_++;
        const double strength = strengths[static_cast<std::size_t>(number) % strengths.size()];
        // A part starts from one of the first orders, so that one bad choice isn't kept for ever.
        const Weights& source = number % 8 == 7
                                    ? first[static_cast<std::size_t>(number / 8) % first.size()]
                                    : parent_.weights;
        batch.push_back(mutated(source, strength, static_cast<std::uint64_t>(number) + 1));
    }
    return batch;
}

bool ScaleSearch::tryLargest(int orders)
{
    aimAt(maxScale_);
    if (tryAt(maxScale_, start_.orders))
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
        aimAt(scale);
        if (!tryAt(scale, nextBatch(orders - tried)) && ++parent_.failedBatches >= patience)
            climb_ = std::max(leastClimb, 0.5 * climb_);
    }
}

} // namespace unfold3d

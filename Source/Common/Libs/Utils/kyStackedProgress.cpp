#include "Utils/kyStackedProgress.h"

#include <algorithm>
#include <atomic>
#include <cmath>

namespace
{

std::atomic<bool> cancelRequested = false;
static_assert(std::atomic<bool>::is_always_lock_free, "requestCancel serves signal handlers");

kyStackedProgress* innermost = nullptr;

// Leaked on purpose: a progress may run in static objects that die after main.
kyStackedProgress::Handler& observer()
{
    static auto* current = new kyStackedProgress::Handler;
    return *current;
}

} // namespace

kyStackedProgress::kyStackedProgress(std::string name, double total, Handler handler)
    : name_(std::move(name)), total_(total), handler_(std::move(handler)), outer_(innermost)
{
    tell();
    innermost = this;
}

kyStackedProgress::~kyStackedProgress()
{
    running_ = false;
    innermost = outer_;
    tell();
    if (!outer_)
        cancelRequested = false;
}

void kyStackedProgress::setScale(double scale)
{
    scale_ = scale;
}

void kyStackedProgress::setState(const std::string& text)
{
    state_ = text;
    tell();
}

void kyStackedProgress::incrementBy(double increment)
{
    const double step = increment * scale_;
    if (!std::isfinite(step))
        return;
    const double before = fraction();
    done_ += step;
    tell();
    // Only what this one really moved by: an overfull inner progress must not overfill its share.
    if (outer_)
        outer_->incrementBy(fraction() - before);
}

double kyStackedProgress::fraction() const
{
    return total_ > 0.0 ? std::clamp(done_ / total_, 0.0, 1.0) : 0.0;
}

bool kyStackedProgress::cancelled() const
{
    return cancelRequested;
}

void kyStackedProgress::requestCancel()
{
    cancelRequested = true;
}

void kyStackedProgress::setObserver(Handler newObserver)
{
    observer() = std::move(newObserver);
}

void kyStackedProgress::tell() const
{
    // A copy, since an observer may put another one in its place.
    if (const Handler current = observer())
        current(*this);
    if (handler_)
        handler_(*this);
}

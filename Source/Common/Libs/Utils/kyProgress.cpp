#include "Utils/kyProgress.h"

kyProgress* kyProgress::the()
{
    // Leaked on purpose, as all that outlives main.
    static auto* theOne = new kyProgress;
    return theOne;
}

void kyProgress::initProgress(const char* text, float total, ProgressVisibility visibility)
{
    running_.push_back(visibility == Hidden
                           ? nullptr
                           : std::make_unique<kyStackedProgress>(text ? text : "", total));
}

void kyProgress::incrementProgressBy(float increment)
{
    if (!running_.empty() && running_.back())
        running_.back()->incrementBy(increment);
}

void kyProgress::terminateProgress()
{
    if (!running_.empty())
        running_.pop_back();
}

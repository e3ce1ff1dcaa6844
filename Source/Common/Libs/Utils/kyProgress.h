#pragma once

#include "Utils/kyStackedProgress.h"

#include <cstdint>
#include <memory>
#include <vector>

/// The progress display of the application, for work that says when it begins and ends.
///
/// What runs is a kyStackedProgress, so an application that watches those sees these too. One begun
/// while another runs is nested in it, and the calls reach the innermost until that is terminated.
/// As all of these they end in the reverse order of their beginning, be they begun here or not. All
/// calls come from the thread of the work.
class kyProgress
{
public:
    enum ProgressVisibility : std::int32_t
    {
        Hidden = 0, ///< nobody is told
        Visible = 1
    };

    /// The one display.
    static kyProgress* the();

    kyProgress(const kyProgress&) = delete;
    kyProgress& operator=(const kyProgress&) = delete;

    /// Begins a progress at 0.
    ///
    /// text   what is being done, in UTF-8; null for no text
    /// total  the sum of all increments, above 0; any other value makes a progress that stays at 0
    void initProgress(const char* text, float total, ProgressVisibility visibility);
    /// Increments beyond the total leave the display full; one that is no finite number is passed
    /// over. Does nothing while none runs.
    void incrementProgressBy(float increment);
    /// Does nothing while none runs.
    void terminateProgress();

private:
    kyProgress() = default;

    std::vector<std::unique_ptr<kyStackedProgress>> running_; ///< a hidden one is null
};

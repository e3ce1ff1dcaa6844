#include "cli/ProgressBar.h"

#include "Utils/kyStackedProgress.h"

#include <string>

namespace uvtool
{
namespace
{

constexpr int cells = 30;

/// "[##########                    ]  33 %  Unfolding UVs..."
std::string barOf(double fraction, const std::string& state)
{
    const int full = static_cast<int>(fraction * cells);
    const std::string percent = std::to_string(static_cast<int>(fraction * 100));
    return "[" + std::string(static_cast<std::size_t>(full), '#') +
           std::string(static_cast<std::size_t>(cells - full), ' ') + "] " +
           std::string(3 - percent.size(), ' ') + percent + " %  " + state;
}

void show(Console& console, const kyStackedProgress& progress)
{
    const kyStackedProgress* outermost = &progress;
    std::string state = progress.state();
    while (outermost->outer() != nullptr) {
        outermost = outermost->outer();
        if (state.empty())
            state = outermost->state();
    }
    console.setStatusLine(barOf(outermost->fraction(), state));
}

} // namespace

ProgressBar::ProgressBar(Console& console) : console_(console)
{
    if (console.showsProgress())
        kyStackedProgress::setObserver(
            [&console](const kyStackedProgress& progress) { show(console, progress); });
}

ProgressBar::~ProgressBar()
{
    kyStackedProgress::setObserver(nullptr);
    console_.setStatusLine("");
}

} // namespace uvtool

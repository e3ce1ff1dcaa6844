#include "UVUtils/solver/SolverProgress.h"

#include "UVUtils/solver/SteadyClock.h"
#include "Utils/kyLog.h"

#include <QCoreApplication>

#include <cmath>
#include <iostream>

namespace kyUnfold3D
{

SolverProgressState* gSolverProgress = nullptr;

namespace
{

// A stage of the solver may be slow, but none is silent for a minute on a mesh it can do at all.
constexpr std::int64_t timeOut = 60'000'000'000;
// Less than this is no progress to the time-out.
constexpr double leastProgress = 0.00001;

// A report draws a line and a progress bar, so callbacks in between go unreported.
constexpr double leastReportedChange = 0.01;
constexpr std::int64_t reportAtLatestAfter = 250'000'001;

bool hasTimedOut(const SolverProgressState& state, double fraction, std::int64_t now)
{
    return now - state.lastChangeTime >= timeOut &&
           std::abs(fraction - state.lastProgress) < leastProgress;
}

bool isWorthAReport(const SolverProgressState& state, double fraction, std::int64_t now)
{
    return std::abs(fraction - state.lastReported) >= leastReportedChange || fraction == 1.0 ||
           now - state.lastReportTime >= reportAtLatestAfter;
}

void report(SolverProgressState& state, double fraction, std::int64_t now)
{
    const double change = std::abs(fraction - state.lastReported);
    // The carriage return lets the next report write over this one; only the end ends the line.
    std::cout << "  " << fraction * 100 << " %        \r" << std::flush;
    if (fraction == 1.0 && state.lastReported != 1.0)
        std::cout << std::endl;
    state.lastReported = fraction;
    state.progress->incrementBy(change);
    state.lastReportTime = now;
}

const char* textOf(SolverPhase phase)
{
    switch (phase) {
    case Importing:
        return QT_TRANSLATE_NOOP("UV", "Importing...");
    case Unfolding:
        return QT_TRANSLATE_NOOP("UV", "Unfolding UVs...");
    case Packing:
        return QT_TRANSLATE_NOOP("UV", "Packing UVs...");
    case Optimizing:
        return QT_TRANSLATE_NOOP("UV", "Optimizing UVs...");
    }
    return "";
}

} // namespace

void onSolverProgress(double fraction)
{
    if (!gSolverProgress || !gSolverProgress->active || gSolverProgress->stopRequested)
        return;
    SolverProgressState& state = *gSolverProgress;
    const std::int64_t now = steadyNanoseconds();

    // Before the new value is stored: a change too small to count that arrives after the minute
    // must not restart the clock.
    if (hasTimedOut(state, fraction, now)) {
        kyLog::errorNR("Unfold3D timeout: request stop because no progress for > 60 seconds");
        state.stopRequested = true;
    }
    if (fraction != state.lastProgress) {
        state.lastProgress = fraction;
        state.lastChangeTime = now;
    }
    if (isWorthAReport(state, fraction, now))
        report(state, fraction, now);
}

bool onSolverStopQuestion()
{
    if (!gSolverProgress)
        return false;
    return gSolverProgress->stopRequested || gSolverProgress->progress->cancelled();
}

SolverProgressScope::SolverProgressScope(SolverPhase phase, SolverProgressState* state)
    : state_(state)
{
    if (!state_)
        return;
    const std::int64_t now = steadyNanoseconds();
    state_->lastReported = 0.0;
    state_->lastProgress = 0.0;
    state_->lastChangeTime = now;
    state_->lastReportTime = now;
    state_->stopRequested = false;
    state_->progress->setState(QCoreApplication::translate("UV", textOf(phase)).toStdString());
    state_->active = true;
}

SolverProgressScope::~SolverProgressScope()
{
    if (state_)
        state_->active = false;
}

} // namespace kyUnfold3D

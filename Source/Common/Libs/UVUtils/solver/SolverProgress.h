#pragma once

#include "Utils/kyStackedProgress.h"

#include <cstdint>

namespace kyUnfold3D
{

/// What the callbacks of the solver know about the run that is under way. It lives on the stack
/// of the run.
struct SolverProgressState
{
    double lastReported = 0.0;       ///< progress at the last report; 0 at the start of a phase
    double lastProgress = 0.0;       ///< the last value that differed from the one before it
    bool active = false;             ///< callbacks count only while true
    std::int64_t lastChangeTime = 0; ///< nanoseconds, when lastProgress changed
    std::int64_t lastReportTime = 0; ///< nanoseconds, when the last report went out
    bool stopRequested = false;      ///< set by the time-out
    kyStackedProgress* progress = nullptr;
};

/// The state of the run under way, null between runs. The solver's callbacks take no argument of
/// ours, so this is how they find it; hence one run at a time in a process.
extern SolverProgressState* gSolverProgress;

/// The progress callback. Standard output and the reporter hear of a change of at least a
/// hundredth, of the end, and of any value after more than 250 ms; all else is noted only. A
/// command whose progress stands still for 60 seconds is asked to stop.
void onSolverProgress(double fraction);

/// The stop callback: true after a time-out, or when the user asked to stop.
bool onSolverStopQuestion();

/// The long commands of the solver, which show a progress of their own.
enum SolverPhase : std::int32_t
{
    Importing = 1,
    Unfolding = 2,
    Packing = 3,
    Optimizing = 4
};

/// A long command is under way: its text is shown, its progress counts from 0, and it can time
/// out. Without a state it does nothing.
class SolverProgressScope
{
public:
    SolverProgressScope(SolverPhase phase, SolverProgressState* state);
    ~SolverProgressScope();
    SolverProgressScope(const SolverProgressScope&) = delete;
    SolverProgressScope& operator=(const SolverProgressScope&) = delete;

private:
    SolverProgressState* state_;
};

} // namespace kyUnfold3D

#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <limits>

namespace bench
{

/// Times an operation and a plain loop for the same amount of work in turn, and reports the ratio
/// of their best times as the counter "ratio": one that another machine, or a busy one, shows too.
class RatioTimer
{
public:
    template <class Operation, class Reference>
    void run(benchmark::State& state, Operation operation, Reference reference)
    {
        const double seconds = secondsOf(operation);
        state.SetIterationTime(seconds);
        operationBest_ = std::min(operationBest_, seconds);
        referenceBest_ = std::min(referenceBest_, secondsOf(reference));
    }
    void report(benchmark::State& state) const
    {
        state.counters["ratio"] = operationBest_ / referenceBest_;
        state.counters["reference_ms"] = 1e3 * referenceBest_;
    }

private:
    template <class Work>
    static double secondsOf(Work& work)
    {
        const auto start = std::chrono::steady_clock::now();
        work();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

    double operationBest_ = std::numeric_limits<double>::infinity();
    double referenceBest_ = std::numeric_limits<double>::infinity();
};

} // namespace bench

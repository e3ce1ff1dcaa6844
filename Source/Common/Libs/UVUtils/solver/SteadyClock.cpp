#include "UVUtils/solver/SteadyClock.h"

#include <chrono>

namespace kyUnfold3D
{

namespace
{

std::function<std::int64_t()>& replacement()
{
    static auto* clock = new std::function<std::int64_t()>;
    return *clock;
}

} // namespace

std::int64_t steadyNanoseconds()
{
    if (replacement())
        return replacement()();
    const auto sinceEpoch = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(sinceEpoch).count();
}

void setSteadyClock(std::function<std::int64_t()> clock)
{
    replacement() = std::move(clock);
}

} // namespace kyUnfold3D

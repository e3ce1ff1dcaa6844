#pragma once

#include <cstdint>
#include <functional>

namespace kyUnfold3D
{

/// Nanoseconds since some fixed moment, never going back.
std::int64_t steadyNanoseconds();

/// Puts another clock behind `steadyNanoseconds`, so that a test of the time-out need not wait for
/// it. Null brings the system's clock back.
void setSteadyClock(std::function<std::int64_t()> clock);

} // namespace kyUnfold3D

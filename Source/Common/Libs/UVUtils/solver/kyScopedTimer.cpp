#include "UVUtils/solver/kyScopedTimer.h"

#include "Utils/kyLog.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include <cstdint>
#include <utility>

namespace
{

boost::posix_time::ptime now()
{
    return boost::posix_time::microsec_clock::universal_time();
}

} // namespace

kyScopedTimer::kyScopedTimer(std::string name) : start_(now()), name_(std::move(name)) {}

kyScopedTimer::~kyScopedTimer()
{
    const std::int64_t milliseconds = (now() - start_).total_microseconds() / 1000;
    kyLog::warningNR("kyScopedTimer %f s - %s %s", static_cast<double>(milliseconds) * 0.001,
                     name_.c_str(), "end");
}

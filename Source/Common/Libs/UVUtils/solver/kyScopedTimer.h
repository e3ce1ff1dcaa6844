#pragma once

#include <boost/date_time/posix_time/ptime.hpp>

#include <string>

/// Logs, for the record, how long the block that it stands in took, when the block ends:
///
///     kyScopedTimer 1.234000 s - NAME end
///
/// in seconds by the clock on the wall, cut off to whole milliseconds. When the clock is set in
/// between, that goes into the time.
class kyScopedTimer
{
public:
    explicit kyScopedTimer(std::string name);
    ~kyScopedTimer();
    kyScopedTimer(const kyScopedTimer&) = delete;
    kyScopedTimer& operator=(const kyScopedTimer&) = delete;

private:
    boost::posix_time::ptime start_; ///< UTC, microseconds
    std::string name_;
};

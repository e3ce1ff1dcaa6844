#pragma once

#include "cli/Console.h"

namespace uvtool
{

/// Shows the running work on the console's status line for as long as it lives.
class ProgressBar
{
public:
    explicit ProgressBar(Console& console);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

private:
    Console& console_;
};

} // namespace uvtool

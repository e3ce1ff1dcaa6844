#pragma once

/// The memory that the process holds, so that a benchmark can tell what a step needs.
namespace bench
{

/// Forgets the peak so far. Does nothing where the system can't.
void resetPeakMemory();

/// Peak since the last reset, in bytes; 0 where the system doesn't tell.
double peakMemoryBytes();

/// What the program has allocated now, in bytes.
double usedMemoryBytes();

} // namespace bench

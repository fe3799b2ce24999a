#pragma once

#include <sys/time.h>

#include <cstdint>

namespace Valen {

// The wall clock, which jumps whenever it is set: no measure of durations. Any thread may use these.

/// The millisecond within the current second, 0 to 999.
int GetSecMS();
/// Milliseconds since the epoch.
std::int64_t GetUnsafeTimeStamp();
/// Microseconds since the epoch.
std::int64_t GetTimeStampInMicroseconds();

/// Splits milliseconds into seconds and microseconds. A negative time gives no positive part.
void MsecToTimeval(std::int64_t ms, timeval& time);

}  // namespace Valen

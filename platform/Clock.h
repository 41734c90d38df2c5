#pragma once
// Millisecond clock of the process: monotonic, truncated to 32 bits so that it
// wraps after about 49.7 days exactly like the tick counters the library was
// written against. Callers subtract in unsigned 32-bit arithmetic.

#include <cstdint>

namespace platform {

// Milliseconds of the monotonic clock, truncated to u32 (wraps).
uint32_t TickCountMs();

// Puts the calling thread to sleep for at least `ms` milliseconds.
void SleepMs(uint32_t ms);

}  // namespace platform

#pragma once
// Results of the timed waits of the platform layer. The numbers are the ones
// the library's callers compare against, so they are part of the interface.

#include <cstdint>

namespace platform {

inline constexpr uint32_t kWaitObject0 = 0;          // signalled
inline constexpr uint32_t kWaitTimeout = 258;        // the time ran out
inline constexpr uint32_t kInfinite = 0xFFFFFFFFu;   // wait without limit

}  // namespace platform

#include "platform/Clock.h"

#include <chrono>
#include <thread>

namespace platform {

uint32_t TickCountMs() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
  return static_cast<uint32_t>(static_cast<uint64_t>(ms));
}

void SleepMs(uint32_t ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }

}  // namespace platform

#pragma once
// A counting semaphore with a maximum count and a timed wait that answers
// with the platform wait results. Any thread may post it.

#include <semaphore.h>

#include <cstdint>

#include "platform/WaitResult.h"

namespace platform {

class Semaphore {
 public:
  Semaphore(uint32_t initialCount, uint32_t maximumCount);
  ~Semaphore();
  Semaphore(const Semaphore&) = delete;
  Semaphore& operator=(const Semaphore&) = delete;

  // Adds one to the count (never above the maximum); false when it was full.
  bool Post();
  // kWaitObject0 after taking one count, kWaitTimeout when none came in time.
  uint32_t Wait(uint32_t dwTimeoutMs);

 private:
  sem_t m_Sem;
  const uint32_t m_Maximum;
};

}  // namespace platform

#include "platform/Semaphore.h"

#include <cerrno>
#include <climits>
#include <ctime>

namespace platform {

namespace {
// sem_t counts up to SEM_VALUE_MAX; larger maxima are clamped to it.
unsigned ClampCount(uint32_t count) {
  return count > static_cast<uint32_t>(SEM_VALUE_MAX) ? static_cast<unsigned>(SEM_VALUE_MAX)
                                                      : static_cast<unsigned>(count);
}
}  // namespace

Semaphore::Semaphore(uint32_t initialCount, uint32_t maximumCount)
    : m_Maximum(ClampCount(maximumCount)) {
  sem_init(&m_Sem, 0, ClampCount(initialCount));
}

Semaphore::~Semaphore() { sem_destroy(&m_Sem); }

bool Semaphore::Post() {
  int value = 0;
  if (sem_getvalue(&m_Sem, &value) == 0 && static_cast<uint32_t>(value) >= m_Maximum) {
    return false;
  }
  return sem_post(&m_Sem) == 0;
}

uint32_t Semaphore::Wait(uint32_t dwTimeoutMs) {
  if (dwTimeoutMs == kInfinite) {
    while (sem_wait(&m_Sem) != 0) {
      if (errno != EINTR) return kWaitTimeout;
    }
    return kWaitObject0;
  }
  timespec deadline{};
  clock_gettime(CLOCK_MONOTONIC, &deadline);
  deadline.tv_sec += static_cast<time_t>(dwTimeoutMs / 1000);
  deadline.tv_nsec += static_cast<long>(dwTimeoutMs % 1000) * 1000000L;
  if (deadline.tv_nsec >= 1000000000L) {
    deadline.tv_sec += 1;
    deadline.tv_nsec -= 1000000000L;
  }
  while (sem_clockwait(&m_Sem, CLOCK_MONOTONIC, &deadline) != 0) {
    if (errno != EINTR) return kWaitTimeout;
  }
  return kWaitObject0;
}

}  // namespace platform

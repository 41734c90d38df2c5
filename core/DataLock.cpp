#include "core/DataLock.h"

#include "platform/Clock.h"
#include "platform/WaitResult.h"

namespace {
constexpr uint32_t kSemaphoreMaximum = 0x7FFFFFFF;
}

CDataLock::~CDataLock() {
  // Waiters and the lock word are not looked at: destroying a held lock is allowed.
  delete hSemaphore.exchange(nullptr);
}

int32_t CDataLock::Acquire(int32_t code) {
  // Fast path: a plain read first, so a held lock costs no bus-locked operation.
  if (lLockWord.load() == 0 && TryAcquire()) {
    iOwnerCode = code;
    return 1;
  }
  if (!WaitAcquire(cTimedWait != 0 ? kTimedWaitMs : platform::kInfinite)) return 0;
  iOwnerCode = code;
  return 1;
}

int32_t CDataLock::Release() {
  int32_t held = 1;
  lLockWord.compare_exchange_strong(held, 0);
  // Free the word before waking anybody; the waiter is taken off the count
  // before the post, which is what its loop relies on.
  if (lWaiters.load() < 1) return 1;
  lWaiters.fetch_sub(1);
  if (platform::Semaphore* sem = hSemaphore.load()) sem->Post();
  return 1;
}

bool CDataLock::TryAcquire() {
  int32_t expected = 0;
  return lLockWord.compare_exchange_strong(expected, 1);
}

bool CDataLock::WaitAcquire(uint32_t dwTimeoutMs) {
  EnsureSemaphore();
  const bool taken = WaitLoop(dwTimeoutMs);
  // The loop leaves its registration standing on every way out.
  lWaiters.fetch_sub(1);
  return taken;
}

bool CDataLock::WaitLoop(uint32_t dwTimeoutMs) {
  bool counted = false;
  const uint32_t start = platform::TickCountMs();
  for (;;) {
    if (!counted) lWaiters.fetch_add(1);
    if (TryAcquire()) return true;
    uint32_t waitMs = platform::kInfinite;
    if (dwTimeoutMs != platform::kInfinite) {
      const uint32_t elapsed = platform::TickCountMs() - start;  // wrap-safe
      if (dwTimeoutMs <= elapsed) return false;
      waitMs = dwTimeoutMs - elapsed;
    }
    platform::Semaphore* sem = hSemaphore.load();
    const uint32_t result = sem != nullptr ? sem->Wait(waitMs) : platform::kWaitTimeout;
    if (result == platform::kWaitObject0) {
      counted = false;  // the releaser already took us off the count
    } else if (result == platform::kWaitTimeout) {
      counted = true;  // nobody took us off
    }
  }
}

void CDataLock::EnsureSemaphore() {
  if (hSemaphore.load() != nullptr) return;
  auto* created = new platform::Semaphore(0, kSemaphoreMaximum);
  platform::Semaphore* expected = nullptr;
  // Two colliding threads may both create one; the loser closes its own.
  if (!hSemaphore.compare_exchange_strong(expected, created)) delete created;
}

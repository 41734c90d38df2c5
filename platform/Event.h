#pragma once
// An event object: signalled or not, with automatic reset (one waiter is
// released and the event falls back to non-signalled) or manual reset (all
// waiters are released and it stays signalled until Reset).

#include <condition_variable>
#include <cstdint>
#include <mutex>

#include "platform/WaitResult.h"

namespace platform {

class Event {
 public:
  Event(bool bManualReset, bool bInitialState);
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;

  void Set();
  void Reset();
  // kWaitObject0 when signalled, kWaitTimeout when `dwTimeoutMs` passed first;
  // kInfinite waits without limit.
  uint32_t Wait(uint32_t dwTimeoutMs);
  bool IsSet() const;

 private:
  const bool m_bManualReset;
  bool m_bSignalled;
  mutable std::mutex m_Mutex;
  std::condition_variable m_Cond;
};

}  // namespace platform

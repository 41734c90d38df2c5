#pragma once
// CDataLock: the mutual-exclusion primitive of the data layer.
//
// A lock without thread identity: it knows that it is held, never by whom, so
// any thread may release it (outer operations hold a list's lock across
// calls, and a watchdog may release a lock another thread is blocked on).
// It is not re-entrant: a second Acquire on the holding thread waits for
// itself. Uncontended it costs one plain read and one compare-exchange and
// owns no kernel object; the first collision creates a semaphore that stays
// until the destructor.
//
// Usage:
//   m_Lock.Acquire(0);   // 1 when taken (always, unless the timed mode is on)
//   ... touch the guarded data ...
//   m_Lock.Release();    // from any thread
//
//   m_Lock.SetTimedWait(true);                // a watchdog's lock: give up
//   if (m_Lock.Acquire(5000) == 0) { ... }    // after 5000 ms of contention
//
// Testing seam: the fields are private; the class befriends
// `CDataLockTestPeer`, which only the tests define, to read and set them.
// Production code never declares that class, so behaviour is unaffected.

#include <atomic>
#include <cstdint>

#include "platform/Semaphore.h"

class CDataLock {
 public:
  CDataLock() = default;
  // Closes the semaphore if one was made. A held lock may be destroyed.
  ~CDataLock();
  CDataLock(const CDataLock&) = delete;
  CDataLock& operator=(const CDataLock&) = delete;

  // 1 when the lock was taken; 0 only in the timed mode after 5000 ms, in
  // which case the owner code stays that of the holder.
  int32_t Acquire(int32_t iOwnerCode);
  // Frees the lock and posts one waiter if any is counted. Always 1.
  int32_t Release();

  // The timed mode: off, a contended Acquire waits until a Release however
  // long that takes (the library's mode); on, it gives up with 0 after
  // kTimedWaitMs. Switch it while no thread waits on the lock.
  void SetTimedWait(bool bTimed) { cTimedWait = bTimed ? 1 : 0; }
  bool IsTimedWait() const { return cTimedWait != 0; }

  // Wait limit of a contended acquire when the timed mode is on.
  static constexpr uint32_t kTimedWaitMs = 5000;

 private:
  friend class CDataLockTestPeer;

  bool TryAcquire();
  bool WaitAcquire(uint32_t dwTimeoutMs);
  bool WaitLoop(uint32_t dwTimeoutMs);
  void EnsureSemaphore();

  // Field order and widths follow the lock's five-word layout.
  int8_t cTimedWait = 0;              // non-zero: contended acquires give up after 5000 ms
  uint8_t m_aPad[3] = {};             // rest of cTimedWait's 32-bit slot
  int32_t iOwnerCode = 0;             // code of the last successful acquirer; diagnostic only
  std::atomic<int32_t> lLockWord{0};  // 0 free, 1 held
  std::atomic<platform::Semaphore*> hSemaphore{nullptr};  // made on first contention
  std::atomic<int32_t> lWaiters{0};                       // counted, not yet posted
};

#pragma once
// CDataLockGuard: holds a CDataLock for one scope, so that every way out of
// a walk (return, break, exception) releases what the walk took.
//
//   CDataLockGuard timeline(pTimeline->lockTimeline, kOwnerSave);
//   CDataLockGuard track(pTrack->lockTrack, kOwnerSave);
//   ...                       // released in reverse order at scope end
//   track.Unlock();           // or earlier, when a walk must release first
//
// In the lock's timed mode an acquire can give up; the guard then holds
// nothing and Held() says so.

#include <cstdint>

#include "core/DataLock.h"

class CDataLockGuard {
 public:
  CDataLockGuard(CDataLock& lock, int32_t iOwnerCode)
      : m_pLock(&lock), m_bHeld(lock.Acquire(iOwnerCode) == 1) {}
  ~CDataLockGuard() { Unlock(); }
  CDataLockGuard(const CDataLockGuard&) = delete;
  CDataLockGuard& operator=(const CDataLockGuard&) = delete;

  bool Held() const { return m_bHeld; }

  // Releases now; the destructor then does nothing.
  void Unlock() {
    if (m_bHeld) {
      m_bHeld = false;
      m_pLock->Release();
    }
  }

 private:
  CDataLock* m_pLock;
  bool m_bHeld;
};

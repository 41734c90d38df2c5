#pragma once
// Test access to CDataLock's private fields and steps; the lock befriends
// this class, which only the tests define.

#include <cstddef>

#include "core/DataLock.h"

class CDataLockTestPeer {
 public:
  static int8_t TimedWait(const CDataLock& l) { return l.cTimedWait; }
  static int32_t OwnerCode(const CDataLock& l) { return l.iOwnerCode; }
  static int32_t LockWord(const CDataLock& l) { return l.lLockWord.load(); }
  static platform::Semaphore* Semaphore(const CDataLock& l) { return l.hSemaphore.load(); }
  static int32_t Waiters(const CDataLock& l) { return l.lWaiters.load(); }
  static void SetWaiters(CDataLock& l, int32_t v) { l.lWaiters.store(v); }
  static void EnsureSemaphore(CDataLock& l) { l.EnsureSemaphore(); }

  static constexpr size_t kOffsetTimedWait = offsetof(CDataLock, cTimedWait);
  static constexpr size_t kOffsetOwnerCode = offsetof(CDataLock, iOwnerCode);
  static constexpr size_t kOffsetLockWord = offsetof(CDataLock, lLockWord);
  static constexpr size_t kOffsetSemaphore = offsetof(CDataLock, hSemaphore);
  static constexpr size_t kOffsetWaiters = offsetof(CDataLock, lWaiters);
};

#include <gtest/gtest.h>

#include <stdexcept>

#include "core/DataLock.h"
#include "core/DataLockGuard.h"
#include "platform/WaitResult.h"
#include "tests/core/DataLockTestPeer.h"

using Peer = CDataLockTestPeer;

// The five fields keep their order; the byte flag has a 32-bit slot.
static_assert(Peer::kOffsetTimedWait == 0);
static_assert(Peer::kOffsetOwnerCode == 4);
static_assert(Peer::kOffsetLockWord == 8);
static_assert(Peer::kOffsetSemaphore == 16);
static_assert(Peer::kOffsetWaiters == 24);

TEST(DataLock, StartsWithAllFieldsZero) {
  CDataLock lock;
  EXPECT_EQ(Peer::TimedWait(lock), 0);
  EXPECT_EQ(Peer::OwnerCode(lock), 0);
  EXPECT_EQ(Peer::LockWord(lock), 0);
  EXPECT_EQ(Peer::Semaphore(lock), nullptr);
  EXPECT_EQ(Peer::Waiters(lock), 0);
}

TEST(DataLock, UncontendedUseNeverCreatesASemaphore) {
  CDataLock lock;
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(lock.Acquire(i), 1);
    EXPECT_EQ(Peer::LockWord(lock), 1);
    ASSERT_EQ(lock.Release(), 1);
    EXPECT_EQ(Peer::LockWord(lock), 0);
  }
  EXPECT_EQ(Peer::Semaphore(lock), nullptr);
  EXPECT_EQ(Peer::Waiters(lock), 0);
}

TEST(DataLock, OwnerCodeKeepsTheLastHolderAfterRelease) {
  CDataLock lock;
  lock.Acquire(42);
  EXPECT_EQ(Peer::OwnerCode(lock), 42);
  lock.Release();
  EXPECT_EQ(Peer::OwnerCode(lock), 42);
  lock.Acquire(5000);
  lock.Release();
  EXPECT_EQ(Peer::OwnerCode(lock), 5000);
}

TEST(DataLock, ReleaseOfAFreeLockChangesNothingWithoutWaiters) {
  CDataLock lock;
  lock.Acquire(7);
  lock.Release();
  EXPECT_EQ(lock.Release(), 1);
  EXPECT_EQ(Peer::LockWord(lock), 0);
  EXPECT_EQ(Peer::OwnerCode(lock), 7);
  EXPECT_EQ(Peer::Waiters(lock), 0);
  EXPECT_EQ(Peer::Semaphore(lock), nullptr);
}

TEST(DataLock, ReleaseOfAFreeLockWithACountedWaiterPostsOnce) {
  CDataLock lock;
  Peer::EnsureSemaphore(lock);
  platform::Semaphore* sem = Peer::Semaphore(lock);
  ASSERT_NE(sem, nullptr);
  Peer::SetWaiters(lock, 1);
  EXPECT_EQ(lock.Release(), 1);
  EXPECT_EQ(Peer::LockWord(lock), 0);
  EXPECT_EQ(Peer::Waiters(lock), 0);
  EXPECT_EQ(sem->Wait(0), platform::kWaitObject0);
  EXPECT_EQ(sem->Wait(0), platform::kWaitTimeout);
}

TEST(DataLock, EnsureSemaphoreKeepsTheFirstOne) {
  CDataLock lock;
  Peer::EnsureSemaphore(lock);
  platform::Semaphore* first = Peer::Semaphore(lock);
  Peer::EnsureSemaphore(lock);
  EXPECT_EQ(Peer::Semaphore(lock), first);
}

TEST(DataLock, AHeldLockWithASemaphoreMayBeDestroyed) {
  auto* lock = new CDataLock;
  lock->Acquire(5000);
  Peer::EnsureSemaphore(*lock);
  EXPECT_EQ(Peer::LockWord(*lock), 1);
  delete lock;  // the sanitizer build checks that the semaphore went with it
  SUCCEED();
}

TEST(DataLock, TimedModeIsSwitchedThroughItsPublicSwitch) {
  CDataLock lock;
  EXPECT_FALSE(lock.IsTimedWait());
  lock.SetTimedWait(true);
  EXPECT_TRUE(lock.IsTimedWait());
  EXPECT_EQ(Peer::TimedWait(lock), 1);  // the flag of the lock's first field
  lock.SetTimedWait(false);
  EXPECT_FALSE(lock.IsTimedWait());
  EXPECT_EQ(Peer::TimedWait(lock), 0);
}

TEST(DataLockGuard, ReleasesOnEveryWayOutOfItsScope) {
  CDataLock lock;
  {
    CDataLockGuard guard(lock, 7);
    EXPECT_TRUE(guard.Held());
    EXPECT_EQ(Peer::LockWord(lock), 1);
    EXPECT_EQ(Peer::OwnerCode(lock), 7);
  }
  EXPECT_EQ(Peer::LockWord(lock), 0);
  EXPECT_THROW(
      {
        CDataLockGuard guard(lock, 8);
        throw std::out_of_range("walk");
      },
      std::out_of_range);
  EXPECT_EQ(Peer::LockWord(lock), 0);
}

TEST(DataLockGuard, UnlockReleasesOnceAndEarly) {
  CDataLock lock;
  {
    CDataLockGuard guard(lock, 1);
    guard.Unlock();
    EXPECT_FALSE(guard.Held());
    EXPECT_EQ(Peer::LockWord(lock), 0);
    ASSERT_EQ(lock.Acquire(2), 1);  // somebody else's now: the guard must leave it
  }
  EXPECT_EQ(Peer::LockWord(lock), 1);
  EXPECT_EQ(Peer::OwnerCode(lock), 2);
  lock.Release();
}

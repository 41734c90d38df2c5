#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <thread>
#include <vector>

#include "core/DataLock.h"
#include "core/DataLockGuard.h"
#include "platform/Clock.h"
#include "platform/WaitResult.h"
#include "tests/core/DataLockTestPeer.h"

using Peer = CDataLockTestPeer;

namespace {

// Polls until `done` holds or about two seconds pass; the result tells which.
template <class Pred>
bool WaitFor(Pred done) {
  for (int i = 0; i < 2000; ++i) {
    if (done()) return true;
    platform::SleepMs(1);
  }
  return done();
}

}  // namespace

TEST(DataLockConcurrency, StressCountsEveryIncrement) {
  constexpr int kThreads = 8;
  constexpr int kIterations = 200000;
  CDataLock lock;
  int64_t counter = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < kIterations; ++i) {
        lock.Acquire(t + 1);
        ++counter;
        lock.Release();
      }
    });
  }
  for (auto& th : threads) th.join();
  EXPECT_EQ(counter, int64_t{kThreads} * kIterations);
  EXPECT_EQ(Peer::LockWord(lock), 0);
  // With nobody waiting, every count taken off lWaiters by a releaser is a
  // post that is either consumed or still in the semaphore: they balance.
  int32_t permits = 0;
  if (platform::Semaphore* sem = Peer::Semaphore(lock)) {
    while (sem->Wait(0) == platform::kWaitObject0) ++permits;
  }
  EXPECT_EQ(Peer::Waiters(lock) + permits, 0);
  EXPECT_GE(Peer::OwnerCode(lock), 1);
  EXPECT_LE(Peer::OwnerCode(lock), kThreads);
}

TEST(DataLockConcurrency, ReleaseFromAnotherThreadWakesASleeper) {
  CDataLock lock;
  ASSERT_EQ(lock.Acquire(1), 1);  // taken by the test thread
  std::atomic<bool> woke{false};
  std::thread sleeper([&] {
    lock.Acquire(3);
    woke = true;
    lock.Release();
  });
  // The sleeper registers on the semaphore made by its collision.
  ASSERT_TRUE(WaitFor([&] { return Peer::Waiters(lock) == 1; }));
  EXPECT_NE(Peer::Semaphore(lock), nullptr);
  EXPECT_FALSE(woke.load());
  std::thread releaser([&] { EXPECT_EQ(lock.Release(), 1); });
  releaser.join();
  sleeper.join();
  EXPECT_TRUE(woke.load());
  EXPECT_EQ(Peer::OwnerCode(lock), 3);
  EXPECT_EQ(Peer::Waiters(lock), 0);
  EXPECT_EQ(Peer::LockWord(lock), 0);
}

TEST(DataLockConcurrency, RacingEnsureSemaphoreLeavesOneHandle) {
  for (int round = 0; round < 200; ++round) {
    CDataLock lock;
    std::barrier start(2);
    platform::Semaphore* seen[2] = {};
    auto racer = [&](int i) {
      start.arrive_and_wait();
      Peer::EnsureSemaphore(lock);
      seen[i] = Peer::Semaphore(lock);
    };
    std::thread a(racer, 0);
    std::thread b(racer, 1);
    a.join();
    b.join();
    // Both see the winner's handle; the loser's was closed (the leak checker
    // of the sanitizer build would name it otherwise).
    ASSERT_NE(seen[0], nullptr);
    EXPECT_EQ(seen[0], seen[1]);
    EXPECT_EQ(Peer::Semaphore(lock), seen[0]);
  }
}

TEST(DataLockConcurrency, SecondAcquireOnTheSameThreadWaitsForItself) {
  CDataLock lock;
  std::atomic<int> stage{0};
  std::thread self([&] {
    lock.Acquire(1);
    stage = 1;
    lock.Acquire(2);  // not re-entrant: waits until somebody else releases
    stage = 2;
    lock.Release();
  });
  ASSERT_TRUE(WaitFor([&] { return stage.load() == 1 && Peer::Waiters(lock) == 1; }));
  platform::SleepMs(200);
  EXPECT_EQ(stage.load(), 1) << "the second Acquire returned without a Release";
  lock.Release();  // ends the wait from outside so the thread can finish
  self.join();
  EXPECT_EQ(stage.load(), 2);
  EXPECT_EQ(Peer::OwnerCode(lock), 2);
}

TEST(DataLockConcurrency, TimedModeGivesUpAfterItsLimit) {
  CDataLock lock;
  lock.SetTimedWait(true);
  ASSERT_EQ(lock.Acquire(77), 1);
  const int32_t waitersBefore = Peer::Waiters(lock);
  int32_t result = -1;
  uint32_t elapsed = 0;
  std::thread contender([&] {
    const uint32_t start = platform::TickCountMs();
    result = lock.Acquire(88);
    elapsed = platform::TickCountMs() - start;
  });
  contender.join();
  EXPECT_EQ(result, 0);
  EXPECT_GE(elapsed, CDataLock::kTimedWaitMs - 20);  // lower bound only: it waited its limit
  EXPECT_EQ(Peer::OwnerCode(lock), 77);
  EXPECT_EQ(Peer::Waiters(lock), waitersBefore);
  EXPECT_EQ(Peer::LockWord(lock), 1);
  lock.Release();
}

TEST(DataLockConcurrency, TimedModeStillTakesALockReleasedInTime) {
  CDataLock lock;
  lock.SetTimedWait(true);
  lock.Acquire(1);
  int32_t result = -1;
  std::thread contender([&] { result = lock.Acquire(2); });
  ASSERT_TRUE(WaitFor([&] { return Peer::Waiters(lock) == 1; }));
  lock.Release();
  contender.join();
  EXPECT_EQ(result, 1);
  EXPECT_EQ(Peer::OwnerCode(lock), 2);
  EXPECT_EQ(Peer::Waiters(lock), 0);
  lock.Release();
}

TEST(DataLockConcurrency, AGuardInTheTimedModeHoldsNothingWhenItsWaitRunsOut) {
  CDataLock lock;
  lock.SetTimedWait(true);
  ASSERT_EQ(lock.Acquire(5000), 1);
  bool held = true;
  std::thread contender([&] {
    CDataLockGuard guard(lock, 6);
    held = guard.Held();
  });  // the guard's end releases nothing: the holder keeps the lock
  contender.join();
  EXPECT_FALSE(held);
  EXPECT_EQ(Peer::LockWord(lock), 1);
  EXPECT_EQ(Peer::OwnerCode(lock), 5000);
  lock.Release();
}

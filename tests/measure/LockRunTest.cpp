// The lock test of control 1020 and its watchdog thread. The test blocks the
// dialog thread for good; here that is shown with bounded waits, and the
// blocked threads are freed afterwards through the lock, which knows no owner.
// This executable takes about 10 s: the test's own sleeps of 2000 ms and the
// 4000 ms that StopWatchdog gives a thread are part of what is tested.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <mutex>
#include <thread>

#include "measure/LockRun.h"
#include "platform/WaitResult.h"

namespace tachyrun {
namespace {

using namespace std::chrono_literals;

// Long enough for a thread that isn't blocked to get where it is going.
constexpr auto kBlockedFor = 300ms;
// Only a hang uses this up.
constexpr uint32_t kFinishWithinMs = 20000;

// Opens the host's members to the tests.
class TestHost : public CLockRun {
 public:
  CDataLock*& Lock() { return m_pTestLock; }
  EventHandle& StopEvent() { return m_hStopEvent; }
  CThreadHandle*& Thread() { return m_hTestThread; }

  // The members as another thread sees them while the test runs.
  struct Members {
    CDataLock* pLock;
    EventHandle hEvent;
    CThreadHandle* pThread;
  };
  Members Snapshot() {
    std::lock_guard<std::mutex> guard(m_StartGuard);
    return {m_pTestLock, m_hStopEvent, m_hTestThread};
  }
};

uint32_t ReturnSeven(void*) {
  return 7;
}

TEST(WatchdogStep, TimeOutsNeverCountARound) {
  int32_t rounds = 0;
  for (int i = 0; i < 200; ++i) {
    EXPECT_EQ(WatchdogStep(platform::kWaitTimeout, rounds), WatchdogAction::Continue);
  }
  EXPECT_EQ(rounds, 0);
}

TEST(WatchdogStep, Result512ReleasesOnExactlyTheFiftiethRound) {
  int32_t rounds = 0;
  for (int i = 1; i < 50; ++i) {
    EXPECT_EQ(WatchdogStep(512, rounds), WatchdogAction::Continue);
  }
  EXPECT_EQ(WatchdogStep(512, rounds), WatchdogAction::ReleaseLock);
  EXPECT_EQ(rounds, 50);
  EXPECT_EQ(WatchdogStep(512, rounds), WatchdogAction::Continue);  // goes on afterwards
  EXPECT_EQ(WatchdogStep(0, rounds), WatchdogAction::Stop);
  EXPECT_EQ(WatchdogStep(1, rounds), WatchdogAction::Continue);
}

TEST(ThreadHandle, WaitGivesTheThreadsResultAsExitCode) {
  CThreadHandle* thread = CThreadHandle::Create(&ReturnSeven, nullptr);
  EXPECT_EQ(thread->Wait(kFinishWithinMs), platform::kWaitObject0);
  EXPECT_EQ(thread->ExitCode(), 7);
  thread->Terminate(-303);  // already ended: nothing changes
  EXPECT_EQ(thread->ExitCode(), 7);
  EXPECT_TRUE(thread->WaitRunToEnd(kFinishWithinMs));
  delete thread;
}

TEST(LockTest, StartWatchdogWhileAThreadIsSetStartsNothing) {
  TestHost host;
  CThreadHandle* other = CThreadHandle::Create(&ReturnSeven, nullptr);
  host.Thread() = other;
  EXPECT_EQ(host.StartWatchdog(), 0);
  EXPECT_EQ(host.Thread(), other);
  EXPECT_EQ(host.StopEvent(), nullptr);  // not even the event was made
  EXPECT_TRUE(other->WaitRunToEnd(kFinishWithinMs));
}

TEST(LockTest, StopWatchdogWithoutAThreadDoesNothing) {
  TestHost host;
  EXPECT_EQ(host.StopWatchdog(), 0);
  EXPECT_EQ(host.Thread(), nullptr);
}

TEST(LockTest, WatchdogHoldsTheLockUntilStoppedAndKeepsItOnItsWayOut) {
  TestHost host;
  CDataLock lock;
  host.Lock() = &lock;
  EXPECT_EQ(host.StartWatchdog(), 0);
  ASSERT_NE(host.Thread(), nullptr);
  ASSERT_NE(host.StopEvent(), nullptr);
  CThreadHandle* watchdog = host.Thread()->Duplicate();
  std::this_thread::sleep_for(kBlockedFor);  // the watchdog takes the lock first

  std::future<int32_t> acquire = std::async(std::launch::async, [&] { return lock.Acquire(1); });
  EXPECT_EQ(acquire.wait_for(kBlockedFor), std::future_status::timeout);
  EXPECT_EQ(watchdog->Wait(0), platform::kWaitTimeout);

  EXPECT_EQ(host.StopWatchdog(), 0);
  EXPECT_EQ(watchdog->ExitCode(), 0);  // ended on the stop event, not by force
  EXPECT_EQ(host.Thread(), nullptr);
  EXPECT_EQ(host.StopEvent(), nullptr);
  EXPECT_EQ(acquire.wait_for(kBlockedFor), std::future_status::timeout);  // not released
  lock.Release();
  ASSERT_EQ(acquire.wait_for(std::chrono::milliseconds(kFinishWithinMs)),
            std::future_status::ready);
  EXPECT_EQ(acquire.get(), 1);
  lock.Release();
  delete watchdog;
}

TEST(LockTest, StopWatchdogEndsAThreadThatDoesNotEndWithMinus303) {
  TestHost host;
  CDataLock lock;
  lock.Acquire(1);  // the watchdog blocks in its first acquire and can't see the event
  host.Lock() = &lock;
  host.StartWatchdog();
  CThreadHandle* watchdog = host.Thread()->Duplicate();
  EXPECT_EQ(host.StopWatchdog(), 0);  // waits its 4000 ms first
  EXPECT_EQ(watchdog->ExitCode(), kWatchdogForcedExitCode);
  EXPECT_EQ(watchdog->Wait(0), platform::kWaitObject0);
  EXPECT_EQ(host.Thread(), nullptr);
  EXPECT_EQ(host.StopEvent(), nullptr);

  // The abandoned thread still holds its own reference to the signalled
  // event: once it gets the lock it sees the event and returns, and the
  // forced exit code stays.
  lock.Release();
  ASSERT_TRUE(watchdog->WaitRunToEnd(kFinishWithinMs));
  EXPECT_EQ(watchdog->ExitCode(), -303);
  delete watchdog;
}

TEST(LockTest, TheDialogThreadStaysBlockedWhileTheWatchdogHoldsTheLock) {
  TestHost host;
  std::atomic<bool> finished{false};
  std::thread dialog([&] {
    host.RunLockTest();
    finished = true;
  });
  // Past the test's 2000 ms settle time the dialog thread sits in its first
  // Acquire: 258 never counts a round, so the watchdog never lets go.
  std::this_thread::sleep_for(3000ms);
  EXPECT_FALSE(finished.load());
  const TestHost::Members during = host.Snapshot();
  ASSERT_NE(during.pLock, nullptr);
  ASSERT_NE(during.pThread, nullptr);
  ASSERT_NE(during.hEvent, nullptr);
  EXPECT_EQ(during.pThread->Wait(0), platform::kWaitTimeout);

  // Free it: a release from here lets the rounds and the rest run. The
  // dialog thread deletes the lock only after StopWatchdog and 2000 ms more.
  // Looking at the event first passes through the lock the watchdog takes
  // in every wait, which orders its acquire before this release.
  EXPECT_FALSE(during.hEvent->IsSet());
  during.pLock->Release();
  dialog.join();
  EXPECT_TRUE(finished.load());
  EXPECT_EQ(host.Lock(), nullptr);
  EXPECT_EQ(host.Thread(), nullptr);
  EXPECT_EQ(host.StopEvent(), nullptr);
}

}  // namespace
}  // namespace tachyrun

#include "measure/LockRun.h"

#include "platform/Clock.h"
#include "platform/WaitResult.h"

namespace tachyrun {
namespace {

constexpr int kHandleSlots = 4;
// Owner code of the watchdog's own acquire.
constexpr int32_t kWatchdogOwnerCode = 0;
constexpr uint32_t kSettleMs = 2000;
constexpr int kDialogRounds = 10;

// Wait for any of the first `count` events: the index of the signalled one,
// or 258 after `dwTimeoutMs`. The watchdog waits on one event; more are
// polled in 1 ms steps.
uint32_t WaitForAny(const CLockRun::EventHandle* handles, int count, uint32_t dwTimeoutMs) {
  if (count == 1) return handles[0]->Wait(dwTimeoutMs);
  const uint32_t start = platform::TickCountMs();
  for (;;) {
    for (int i = 0; i < count; ++i) {
      if (handles[i]->Wait(0) == platform::kWaitObject0) return static_cast<uint32_t>(i);
    }
    if (platform::TickCountMs() - start >= dwTimeoutMs) return platform::kWaitTimeout;
    platform::SleepMs(1);
  }
}

}  // namespace

WatchdogAction WatchdogStep(uint32_t waitResult, int32_t& rounds) {
  if (waitResult == platform::kWaitObject0) return WatchdogAction::Stop;
  // 512, not the time-out result 258: a timed-out round is never counted.
  if (waitResult != kWatchdogRoundResult) return WatchdogAction::Continue;
  ++rounds;
  return rounds == kWatchdogReleaseRound ? WatchdogAction::ReleaseLock : WatchdogAction::Continue;
}

CLockRun::~CLockRun() {
  delete m_hTestThread;
}

uint32_t CLockRun::WatchdogThreadProc(void* dialog) {
  auto* host = static_cast<CLockRun*>(dialog);
  // The thread's own reference to the stop event: it outlives StopWatchdog's close.
  EventHandle handles[kHandleSlots];
  CDataLock* lock = nullptr;
  {
    std::lock_guard<std::mutex> guard(host->m_StartGuard);
    handles[0] = host->m_hStopEvent;
    lock = host->m_pTestLock;
  }
  if (!handles[0] || lock == nullptr) return 0;  // closed before the thread began
  const int count = 1;
  int32_t rounds = 0;
  lock->Acquire(kWatchdogOwnerCode);
  for (;;) {
    switch (WatchdogStep(WaitForAny(handles, count, kWatchdogRoundMs), rounds)) {
      case WatchdogAction::Stop:
        return 0;  // the lock stays held on this way out
      case WatchdogAction::ReleaseLock:
        lock->Release();
        break;
      case WatchdogAction::Continue:
        break;
    }
  }
}

int32_t CLockRun::StartWatchdog() {
  if (m_hTestThread != nullptr) return 0;
  std::lock_guard<std::mutex> guard(m_StartGuard);
  if (!m_hStopEvent) m_hStopEvent = std::make_shared<platform::Event>(false, false);
  m_hTestThread = CThreadHandle::Create(&WatchdogThreadProc, static_cast<CLockRun*>(this));
  return 0;
}

int32_t CLockRun::StopWatchdog() {
  if (m_hTestThread == nullptr) return 0;
  m_hTestThread->SetPriority(0);
  if (m_hStopEvent) m_hStopEvent->Set();
  platform::SleepMs(0);
  if (m_hTestThread->Wait(kWatchdogStopWaitMs) != platform::kWaitObject0) {
    m_hTestThread->Terminate(kWatchdogForcedExitCode);
  }
  std::lock_guard<std::mutex> guard(m_StartGuard);
  delete m_hTestThread;
  m_hTestThread = nullptr;
  if (m_hStopEvent) m_hStopEvent.reset();
  return 0;
}

void CLockRun::RunLockTest() {
  // Never contended; deleted while still held, which the lock allows.
  CDataLock* first = new CDataLock;
  first->Acquire(0);
  {
    std::lock_guard<std::mutex> guard(m_StartGuard);
    m_pTestLock = new CDataLock;
  }
  StartWatchdog();
  platform::SleepMs(kSettleMs);
  for (int round = 0; round < kDialogRounds; ++round) {
    if (m_pTestLock->Acquire(kLockTestOwnerCode) == 1) m_pTestLock->Release();
  }
  StopWatchdog();
  delete first;
  platform::SleepMs(kSettleMs);
  std::lock_guard<std::mutex> guard(m_StartGuard);
  delete m_pTestLock;
  m_pTestLock = nullptr;
}

}  // namespace tachyrun

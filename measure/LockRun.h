#pragma once
// The lock test of the dialog (control 1020): a cross-thread test of
// CDataLock. A watchdog thread takes a lock and is meant to release it after
// 50 rounds of 200 ms, while the dialog thread sleeps in Acquire on it.
//
// Kept as it was written: the watchdog counts a round only on a wait result
// of 512, which a timed-out wait never gives (it answers 258). So the lock
// stays held, and the dialog thread stays blocked in its first Acquire for
// good once the test starts. The headless runner refuses this test unless
// asked explicitly.
//
// CTachyrunDlg derives from this class, so the members and operations below
// are the dialog's own.

#include <cstdint>
#include <memory>
#include <mutex>

#include "core/DataLock.h"
#include "measure/ThreadHandle.h"
#include "platform/Event.h"

namespace tachyrun {

// The wait result on which the watchdog counts a round.
inline constexpr uint32_t kWatchdogRoundResult = 512;
// Rounds after which the watchdog releases the lock.
inline constexpr int32_t kWatchdogReleaseRound = 50;
// The watchdog's wait per round, ms.
inline constexpr uint32_t kWatchdogRoundMs = 200;
// How long StopWatchdog waits for the thread before ending it by force.
inline constexpr uint32_t kWatchdogStopWaitMs = 4000;
// Exit code of a watchdog ended by force.
inline constexpr int32_t kWatchdogForcedExitCode = -303;
// Owner code of the dialog thread's acquires.
inline constexpr int32_t kLockTestOwnerCode = 5000;

// What the watchdog does with one wait result.
enum class WatchdogAction { Stop, Continue, ReleaseLock };
// Result 0 stops; a result of 512 counts a round (`rounds` grows) and asks
// for the release when the count reaches exactly 50; anything else goes on.
WatchdogAction WatchdogStep(uint32_t waitResult, int32_t& rounds);

class CLockRun {
 public:
  // Event handles are shared: a thread waiting on an event keeps it alive
  // after its creator closed it, as a waited-on kernel object stays alive.
  using EventHandle = std::shared_ptr<platform::Event>;

  CLockRun() = default;
  // Closes what is still open; a running watchdog is not stopped.
  ~CLockRun();
  CLockRun(const CLockRun&) = delete;
  CLockRun& operator=(const CLockRun&) = delete;

  // The test: the dialog thread's side. Blocks for good (see above).
  void RunLockTest();
  // Starts the watchdog unless one runs. Always 0.
  int32_t StartWatchdog();
  // Signals the watchdog, waits 4000 ms for it and ends it by force with
  // -303 if it hasn't ended; closes and nulls both handles. Always 0.
  int32_t StopWatchdog();
  // The watchdog's body; `dialog` is the CLockRun. Returns 0.
  static uint32_t WatchdogThreadProc(void* dialog);

 protected:
  CDataLock* m_pTestLock = nullptr;
  EventHandle m_hStopEvent;
  CThreadHandle* m_hTestThread = nullptr;
  // Guards the writes of the three members above and every read of them
  // from another thread than the dialog's: the watchdog's first reads, which
  // may even come after StopWatchdog's close when the thread was ended by force.
  std::mutex m_StartGuard;
};

}  // namespace tachyrun

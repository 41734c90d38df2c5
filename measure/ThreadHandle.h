#pragma once
// CThreadHandle: a started thread as the lock test sees it: it can be waited
// for with a time limit, and it can be ended by force with an exit code.
//
// A thread can't be killed safely on this platform, so a forced end works on
// the handle: Terminate records the exit code and makes every handle of the
// thread signalled at once; the thread itself is abandoned (detached) and
// runs on to its own end, touching only what it shares ownership of. The
// exit code stays the forced one even when the thread later returns.
//
// Usage:
//   CThreadHandle* thread = CThreadHandle::Create(&Proc, arg);
//   if (thread->Wait(4000) != 0) thread->Terminate(-303);
//   delete thread;   // closes this handle; the thread isn't affected

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>

namespace tachyrun {

// Exit code of a thread that is still running.
inline constexpr int32_t kStillActive = 259;

class CThreadHandle {
 public:
  using ThreadProc = uint32_t (*)(void* argument);

  // Starts proc(argument) on a new thread; its result becomes the exit code.
  static CThreadHandle* Create(ThreadProc proc, void* argument);
  ~CThreadHandle() = default;
  CThreadHandle(const CThreadHandle&) = delete;
  CThreadHandle& operator=(const CThreadHandle&) = delete;

  // A second handle of the same thread.
  CThreadHandle* Duplicate() const;

  // 0 when the thread has ended (or was ended by force), 258 when
  // `dwTimeoutMs` passed first; 0xFFFFFFFF waits without limit.
  uint32_t Wait(uint32_t dwTimeoutMs);
  // Ends the thread as far as its handles can tell: exit code `iExitCode`,
  // signalled. Nothing happens to a thread that has already ended.
  void Terminate(int32_t iExitCode);
  // kStillActive while it runs; then its result or the forced code.
  int32_t ExitCode() const;
  // Recorded only: every thread here runs at the normal priority.
  void SetPriority(int32_t iPriority);
  int32_t Priority() const;

  // True once the thread function itself has returned, waiting at most
  // `dwTimeoutMs`. After a forced end this tells when the abandoned thread
  // is really gone, which is what its owner needs before freeing what the
  // thread still uses.
  bool WaitRunToEnd(uint32_t dwTimeoutMs);

 private:
  struct State {
    std::mutex mutex;
    std::condition_variable changed;
    bool bSignalled = false;
    bool bRanToEnd = false;
    int32_t iExitCode = kStillActive;
    int32_t iPriority = 0;
  };

  explicit CThreadHandle(std::shared_ptr<State> state) : m_State(std::move(state)) {}
  // Waits until pred() holds or the time runs out; true when it holds.
  template <class Pred>
  bool WaitFor(uint32_t dwTimeoutMs, Pred pred);

  std::shared_ptr<State> m_State;
};

}  // namespace tachyrun

#include "measure/ThreadHandle.h"

#include <chrono>
#include <thread>

#include "platform/WaitResult.h"

namespace tachyrun {

CThreadHandle* CThreadHandle::Create(ThreadProc proc, void* argument) {
  auto state = std::make_shared<State>();
  std::thread([state, proc, argument] {
    const uint32_t result = proc(argument);
    std::lock_guard<std::mutex> guard(state->mutex);
    if (!state->bSignalled) {
      state->iExitCode = static_cast<int32_t>(result);
      state->bSignalled = true;
    }
    state->bRanToEnd = true;
    state->changed.notify_all();
  }).detach();
  return new CThreadHandle(std::move(state));
}

CThreadHandle* CThreadHandle::Duplicate() const {
  return new CThreadHandle(m_State);
}

template <class Pred>
bool CThreadHandle::WaitFor(uint32_t dwTimeoutMs, Pred pred) {
  std::unique_lock<std::mutex> lock(m_State->mutex);
  if (dwTimeoutMs == platform::kInfinite) {
    m_State->changed.wait(lock, pred);
    return true;
  }
  return m_State->changed.wait_for(lock, std::chrono::milliseconds(dwTimeoutMs), pred);
}

uint32_t CThreadHandle::Wait(uint32_t dwTimeoutMs) {
  const bool ended = WaitFor(dwTimeoutMs, [this] { return m_State->bSignalled; });
  return ended ? platform::kWaitObject0 : platform::kWaitTimeout;
}

void CThreadHandle::Terminate(int32_t iExitCode) {
  std::lock_guard<std::mutex> guard(m_State->mutex);
  if (m_State->bSignalled) return;
  m_State->iExitCode = iExitCode;
  m_State->bSignalled = true;
  m_State->changed.notify_all();
}

int32_t CThreadHandle::ExitCode() const {
  std::lock_guard<std::mutex> guard(m_State->mutex);
  return m_State->iExitCode;
}

void CThreadHandle::SetPriority(int32_t iPriority) {
  std::lock_guard<std::mutex> guard(m_State->mutex);
  m_State->iPriority = iPriority;
}

int32_t CThreadHandle::Priority() const {
  std::lock_guard<std::mutex> guard(m_State->mutex);
  return m_State->iPriority;
}

bool CThreadHandle::WaitRunToEnd(uint32_t dwTimeoutMs) {
  return WaitFor(dwTimeoutMs, [this] { return m_State->bRanToEnd; });
}

}  // namespace tachyrun

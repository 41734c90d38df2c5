#include "platform/Event.h"

#include <chrono>

namespace platform {

Event::Event(bool bManualReset, bool bInitialState)
    : m_bManualReset(bManualReset), m_bSignalled(bInitialState) {}

void Event::Set() {
  {
    std::lock_guard<std::mutex> guard(m_Mutex);
    m_bSignalled = true;
  }
  if (m_bManualReset) {
    m_Cond.notify_all();
  } else {
    m_Cond.notify_one();
  }
}

void Event::Reset() {
  std::lock_guard<std::mutex> guard(m_Mutex);
  m_bSignalled = false;
}

uint32_t Event::Wait(uint32_t dwTimeoutMs) {
  std::unique_lock<std::mutex> lock(m_Mutex);
  const auto signalled = [this] { return m_bSignalled; };
  if (dwTimeoutMs == kInfinite) {
    m_Cond.wait(lock, signalled);
  } else if (!m_Cond.wait_for(lock, std::chrono::milliseconds(dwTimeoutMs), signalled)) {
    return kWaitTimeout;
  }
  if (!m_bManualReset) {
    m_bSignalled = false;
  }
  return kWaitObject0;
}

bool Event::IsSet() const {
  std::lock_guard<std::mutex> guard(m_Mutex);
  return m_bSignalled;
}

}  // namespace platform

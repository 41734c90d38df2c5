#include "app/RunningNotice.h"

#include <ostream>

namespace tachyrun {

CRunningNotice::CRunningNotice(std::ostream& err, std::string strText, bool bEnabled,
                               std::chrono::milliseconds delay)
    : m_Err(err), m_strText(std::move(strText)) {
  if (bEnabled) m_Thread = std::thread(&CRunningNotice::WaitAndTell, this, delay);
}

CRunningNotice::~CRunningNotice() {
  {
    std::lock_guard<std::mutex> guard(m_Mutex);
    m_bEnded = true;
  }
  m_Ended.notify_all();
  if (m_Thread.joinable()) m_Thread.join();
}

void CRunningNotice::WaitAndTell(std::chrono::milliseconds delay) {
  std::unique_lock<std::mutex> lock(m_Mutex);
  if (m_Ended.wait_for(lock, delay, [this] { return m_bEnded; })) return;
  m_Err << "tachyrun: " << m_strText << " is running...\n" << std::flush;
}

}  // namespace tachyrun

#pragma once
// A notice on a terminal that a long test is still running: when the test
// has not ended `delay` after the notice was built, one line goes to the
// stream ("tachyrun: 1005 Test is running..."). Destroying the notice ends
// its wait at once. A disabled notice starts nothing.

#include <chrono>
#include <condition_variable>
#include <iosfwd>
#include <mutex>
#include <string>
#include <thread>

namespace tachyrun {

// Tests that run this long get a notice.
inline constexpr std::chrono::milliseconds kNoticeDelay{2000};

class CRunningNotice {
 public:
  CRunningNotice(std::ostream& err, std::string strText, bool bEnabled,
                 std::chrono::milliseconds delay = kNoticeDelay);
  ~CRunningNotice();
  CRunningNotice(const CRunningNotice&) = delete;
  CRunningNotice& operator=(const CRunningNotice&) = delete;

 private:
  void WaitAndTell(std::chrono::milliseconds delay);

  std::ostream& m_Err;
  const std::string m_strText;
  std::mutex m_Mutex;
  std::condition_variable m_Ended;
  bool m_bEnded = false;
  std::thread m_Thread;
};

}  // namespace tachyrun

// The notice that a long test is still running, on its own thread.
#include <gtest/gtest.h>

#include <chrono>
#include <sstream>
#include <thread>

#include "app/RunningNotice.h"

namespace tachyrun {
namespace {

using namespace std::chrono_literals;

TEST(RunningNotice, ATestLongerThanTheDelayIsNamedOnce) {
  std::ostringstream err;
  {
    CRunningNotice notice(err, "1005 Test", true, 20ms);
    std::this_thread::sleep_for(300ms);
  }
  EXPECT_EQ(err.str(), "tachyrun: 1005 Test is running...\n");
}

TEST(RunningNotice, ATestThatEndsFirstLeavesNothingAndEndsTheWaitAtOnce) {
  std::ostringstream err;
  const auto start = std::chrono::steady_clock::now();
  { CRunningNotice notice(err, "1033 CPU 1920x1080", true, 60s); }
  EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
  EXPECT_TRUE(err.str().empty());
}

TEST(RunningNotice, ADisabledNoticeSaysNothing) {
  std::ostringstream err;
  {
    CRunningNotice notice(err, "1005 Test", false, 1ms);
    std::this_thread::sleep_for(50ms);
  }
  EXPECT_TRUE(err.str().empty());
}

}  // namespace
}  // namespace tachyrun

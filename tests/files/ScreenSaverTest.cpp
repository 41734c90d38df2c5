#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "files/ScreenSaver.h"
#include "platform/Clock.h"

namespace fs = std::filesystem;

namespace {

const std::string kInhibitLine =
    "Inhibit Tachyrun|Screen saver switched off by the application -> ";

// Runs on the private session bus that ctest starts for this program, with a
// stand-in screen saver service that the test starts and stops itself.
class ScreenSaverTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::getenv("DBUS_SESSION_BUS_ADDRESS") == nullptr) {
      GTEST_SKIP() << "needs a session bus; ctest runs this under dbus-run-session";
    }
    m_Log = fs::temp_directory_path() / ("tachyrun_saver_" + std::to_string(getpid()) + ".log");
    fs::remove(m_Log);
  }

  void TearDown() override {
    ScreenSaverOn();  // the inhibition state is process-wide
    StopService();
    fs::remove(m_Log);
  }

  void StartService(bool refuse = false) {
    const size_t ready = Count("ready");
    m_Service = fork();
    if (m_Service == 0) {
      execl(TACHYRUN_FAKE_SCREENSAVER, TACHYRUN_FAKE_SCREENSAVER, m_Log.c_str(),
            refuse ? "--refuse" : nullptr, nullptr);
      _exit(127);
    }
    ASSERT_GT(m_Service, 0);
    ASSERT_TRUE(WaitFor([&] { return Count("ready") == ready + 1; })) << "service never ready";
  }

  void StopService() {
    if (m_Service <= 0) return;
    kill(m_Service, SIGTERM);
    int status = 0;
    waitpid(m_Service, &status, 0);
    m_Service = -1;
    // The bus drops the name when it sees the connection go.
    EXPECT_TRUE(WaitFor([] { return IsScreenSaverActive() == 0; }));
  }

  // The calls the service received, in order ("ready" lines left out).
  std::vector<std::string> Calls() const {
    std::vector<std::string> calls;
    std::ifstream in(m_Log);
    for (std::string line; std::getline(in, line);) {
      if (line != "ready") calls.push_back(line);
    }
    return calls;
  }

  size_t Count(const std::string& wanted) const {
    std::ifstream in(m_Log);
    size_t count = 0;
    for (std::string line; std::getline(in, line);) count += line == wanted;
    return count;
  }

  static bool WaitFor(const std::function<bool()>& done) {
    for (int i = 0; i < 1000; ++i) {
      if (done()) return true;
      platform::SleepMs(10);
    }
    return done();
  }

  fs::path m_Log;
  pid_t m_Service = -1;
};

}  // namespace

TEST_F(ScreenSaverTest, WithoutAServiceOffFailsAndNothingIsActive) {
  EXPECT_EQ(IsScreenSaverActive(), 0);
  EXPECT_EQ(ScreenSaverOff(), 0);
  EXPECT_EQ(IsScreenSaverActive(), 0);
  EXPECT_EQ(ScreenSaverOn(), 1) << "nothing to hand back, and the bus answered";
}

TEST_F(ScreenSaverTest, OffInhibitsOnceAndOnHandsTheCookieBack) {
  StartService();
  EXPECT_EQ(IsScreenSaverActive(), 1);
  EXPECT_EQ(ScreenSaverOff(), 1);
  EXPECT_EQ(IsScreenSaverActive(), 0);
  EXPECT_EQ(Calls(), std::vector<std::string>{kInhibitLine + "1000"});

  EXPECT_EQ(ScreenSaverOff(), 1);
  EXPECT_EQ(Calls().size(), 1u) << "a second Off asks for no second inhibition";

  EXPECT_EQ(ScreenSaverOn(), 1);
  EXPECT_EQ(IsScreenSaverActive(), 1);
  EXPECT_EQ(Calls(), (std::vector<std::string>{kInhibitLine + "1000", "UnInhibit 1000"}));

  EXPECT_EQ(ScreenSaverOn(), 1);
  EXPECT_EQ(Calls().size(), 2u) << "nothing left to hand back";

  EXPECT_EQ(ScreenSaverOff(), 1);
  EXPECT_EQ(ScreenSaverOn(), 1);
  EXPECT_EQ(Calls(), (std::vector<std::string>{kInhibitLine + "1000", "UnInhibit 1000",
                                               kInhibitLine + "1001", "UnInhibit 1001"}));
}

TEST_F(ScreenSaverTest, RefusedInhibitionGivesZero) {
  StartService(/*refuse=*/true);
  EXPECT_EQ(ScreenSaverOff(), 0);
  EXPECT_EQ(IsScreenSaverActive(), 1) << "nothing is inhibited";
  EXPECT_EQ(ScreenSaverOn(), 1);
  EXPECT_EQ(Calls(), std::vector<std::string>{kInhibitLine + "refused"});
}

TEST_F(ScreenSaverTest, CookieOfAServiceThatRestartedIsRefusedAndForgotten) {
  StartService();
  ASSERT_EQ(ScreenSaverOff(), 1);
  StopService();
  StartService();
  EXPECT_EQ(ScreenSaverOn(), 0);
  EXPECT_EQ(IsScreenSaverActive(), 1);
  EXPECT_EQ(ScreenSaverOff(), 1) << "the next Off asks the new service";
  EXPECT_EQ(ScreenSaverOn(), 1);
  EXPECT_EQ(Calls(), (std::vector<std::string>{kInhibitLine + "1000", "UnInhibit 1000 unknown",
                                               kInhibitLine + "1000", "UnInhibit 1000"}));
}

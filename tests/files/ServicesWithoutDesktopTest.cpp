#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "files/ScreenInput.h"
#include "files/ScreenSaver.h"

namespace fs = std::filesystem;

namespace {

// No X display and no session bus: every desktop service gives its failure
// value and the process goes on. The environment is set before any of them
// runs, so no connection of GLib or Xlib exists yet.
class ServicesWithoutDesktopTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    unsetenv("DISPLAY");
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
    s_RuntimeDir = fs::temp_directory_path() / ("tachyrun_nobus_" + std::to_string(getpid()));
    fs::create_directories(s_RuntimeDir);
    setenv("XDG_RUNTIME_DIR", s_RuntimeDir.c_str(), 1);  // holds no "bus"
  }
  static void TearDownTestSuite() { fs::remove_all(s_RuntimeDir); }

  static void ExpectSaverFailures() {
    EXPECT_EQ(ScreenSaverOff(), 0);
    EXPECT_EQ(IsScreenSaverActive(), 0);
    EXPECT_EQ(ScreenSaverOn(), 0);
    EXPECT_EQ(IsScreenSaverActive(), 0);
  }

  static inline fs::path s_RuntimeDir;
};

}  // namespace

TEST_F(ServicesWithoutDesktopTest, NoBusAddressAndNoBusSocket) {
  ExpectSaverFailures();
}

TEST_F(ServicesWithoutDesktopTest, BusAddressThatLeadsNowhere) {
  setenv("DBUS_SESSION_BUS_ADDRESS", ("unix:path=" + (s_RuntimeDir / "gone").string()).c_str(), 1);
  ExpectSaverFailures();
  setenv("DBUS_SESSION_BUS_ADDRESS", "not an address", 1);
  ExpectSaverFailures();
  unsetenv("DBUS_SESSION_BUS_ADDRESS");
}

TEST_F(ServicesWithoutDesktopTest, NoDisplayGivesZeroSizeAndNoKeys) {
  ReadScreenSize();
  EXPECT_EQ(GetScreenWidth(), 0);
  EXPECT_EQ(GetScreenHeight(), 0);
  for (int32_t key : {0x01, 0x10, 0x41, 0x70, 0x1B}) EXPECT_EQ(IsKeyDown(key), 0) << key;
}

TEST_F(ServicesWithoutDesktopTest, DisplayThatLeadsNowhere) {
  setenv("DISPLAY", ":987", 1);
  ReadScreenSize();
  EXPECT_EQ(GetScreenWidth(), 0);
  EXPECT_EQ(GetScreenHeight(), 0);
  EXPECT_EQ(IsKeyDown(0x41), 0);
  unsetenv("DISPLAY");
}

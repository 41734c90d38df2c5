#include <gtest/gtest.h>

// Xlib's macros (None, Bool) clash with GoogleTest's names: it comes after.
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <cstdlib>
#include <initializer_list>

#include "files/ScreenInput.h"
#include "platform/Clock.h"

namespace {

// Runs on the virtual display that ctest starts for this program, of the
// size given at build time. Keys and buttons are pressed through XTEST,
// which changes the server's real key state.
class ScreenInputTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::getenv("DISPLAY") == nullptr) GTEST_SKIP() << "needs ctest's virtual display";
    // A busy server refuses some connections: ask again, as the library does.
    for (int attempt = 0; attempt < 5 && m_Display == nullptr; ++attempt) {
      if (attempt > 0) platform::SleepMs(2u << attempt);
      m_Display = XOpenDisplay(nullptr);
    }
    ASSERT_NE(m_Display, nullptr);
    int event = 0, error = 0, major = 0, minor = 0;
    ASSERT_TRUE(XTestQueryExtension(m_Display, &event, &error, &major, &minor));
  }
  void TearDown() override {
    if (m_Display != nullptr) XCloseDisplay(m_Display);
  }

  void Key(KeySym symbol, bool down) {
    const KeyCode code = XKeysymToKeycode(m_Display, symbol);
    ASSERT_NE(code, 0) << symbol;
    XTestFakeKeyEvent(m_Display, code, down, CurrentTime);
    XSync(m_Display, False);
  }

  void Button(unsigned int button, bool down) {
    XTestFakeButtonEvent(m_Display, button, down, CurrentTime);
    XSync(m_Display, False);
  }

  Display* m_Display = nullptr;
};

}  // namespace

TEST_F(ScreenInputTest, ReadScreenSizeStoresTheDisplaySize) {
  ReadScreenSize();
  EXPECT_EQ(GetScreenWidth(), TACHYRUN_TEST_SCREEN_WIDTH);
  EXPECT_EQ(GetScreenHeight(), TACHYRUN_TEST_SCREEN_HEIGHT);
}

TEST_F(ScreenInputTest, LetterKeyIsDownOnlyWhileHeld) {
  EXPECT_EQ(IsKeyDown('A'), 0);
  Key(XK_a, true);
  EXPECT_EQ(IsKeyDown('A'), 1);
  EXPECT_EQ(IsKeyDown('B'), 0);
  Key(XK_a, false);
  EXPECT_EQ(IsKeyDown('A'), 0);
}

TEST_F(ScreenInputTest, RunsOfKeysMapToTheirSymbols) {
  struct Pair {
    int32_t virtualKey;
    KeySym symbol;
  };
  for (const Pair& pair :
       {Pair{'0', XK_0}, Pair{'7', XK_7}, Pair{'Z', XK_z}, Pair{0x70, XK_F1}, Pair{0x74, XK_F5},
        Pair{0x7B, XK_F12}, Pair{0x1B, XK_Escape}, Pair{0x20, XK_space}, Pair{0x0D, XK_Return},
        Pair{0x25, XK_Left}, Pair{0x2E, XK_Delete}, Pair{0x6B, XK_KP_Add}, Pair{0xBD, XK_minus}}) {
    Key(pair.symbol, true);
    EXPECT_EQ(IsKeyDown(pair.virtualKey), 1) << std::hex << pair.virtualKey;
    Key(pair.symbol, false);
    EXPECT_EQ(IsKeyDown(pair.virtualKey), 0) << std::hex << pair.virtualKey;
  }
}

TEST_F(ScreenInputTest, ShiftIsEitherSideWhileLeftAndRightAreTheirOwn) {
  Key(XK_Shift_R, true);
  EXPECT_EQ(IsKeyDown(0x10), 1);
  EXPECT_EQ(IsKeyDown(0xA1), 1);
  EXPECT_EQ(IsKeyDown(0xA0), 0);
  Key(XK_Shift_R, false);
  Key(XK_Control_L, true);
  EXPECT_EQ(IsKeyDown(0x11), 1);
  EXPECT_EQ(IsKeyDown(0xA2), 1);
  EXPECT_EQ(IsKeyDown(0xA3), 0);
  EXPECT_EQ(IsKeyDown(0x10), 0);
  Key(XK_Control_L, false);
  EXPECT_EQ(IsKeyDown(0x11), 0);
}

TEST_F(ScreenInputTest, MouseButtonsAreKeysToo) {
  Button(1, true);
  EXPECT_EQ(IsKeyDown(0x01), 1);
  EXPECT_EQ(IsKeyDown(0x02), 0);
  Button(1, false);
  Button(3, true);
  EXPECT_EQ(IsKeyDown(0x02), 1);
  Button(3, false);
  EXPECT_EQ(IsKeyDown(0x01), 0);
  EXPECT_EQ(IsKeyDown(0x02), 0);
}

TEST_F(ScreenInputTest, ManyCallsInARowAllReachTheServer) {
  // Each call connects anew; a server flooded with connections refuses some,
  // and the library's retries must hide that.
  Key(XK_a, true);
  for (int i = 0; i < 300; ++i) ASSERT_EQ(IsKeyDown('A'), 1) << "call " << i;
  Key(XK_a, false);
}

TEST_F(ScreenInputTest, NumbersWithoutAKeyAreNeverDown) {
  Key(XK_a, true);
  for (int32_t key : {0x00, 0x07, 0x0A, 0xFF, 0x100, -1, 0x41 + 0x10000}) {
    EXPECT_EQ(IsKeyDown(key), 0) << key;
  }
  Key(XK_a, false);
}

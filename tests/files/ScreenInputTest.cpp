#include <gtest/gtest.h>

// Xlib's macros (None, Bool) clash with GoogleTest's names: it comes after.
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>
#include <thread>

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

// A display of its own number that refuses its first connection, as a busy
// server does, and hands each later one on to the real display. It listens
// in Linux's abstract socket space, where Xlib looks first.
class RefusingDisplay {
 public:
  RefusingDisplay() {
    // The real display as ":N" or ":N.S" names it, read before a test names this one.
    const char* real = std::getenv("DISPLAY");
    m_RealNumber = real != nullptr && real[0] == ':' ? std::atoi(real + 1) : -1;
    m_Listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    for (int number = 3000 + getpid() % 20000; m_Number < 0 && number < 60000; ++number) {
      const sockaddr_un address = AbstractAddress(number);
      if (bind(m_Listener, reinterpret_cast<const sockaddr*>(&address), AddressLength(address)) ==
          0) {
        m_Number = number;
      }
    }
    if (m_Number >= 0 && listen(m_Listener, 4) == 0) m_Thread = std::thread([this] { Serve(); });
  }
  ~RefusingDisplay() {
    m_Stop = true;
    if (m_Thread.joinable()) m_Thread.join();
    close(m_Listener);
  }
  bool Listens() const { return m_Thread.joinable(); }
  std::string Name() const { return ":" + std::to_string(m_Number); }
  int Refused() const { return m_Refused.load(); }

 private:
  static sockaddr_un AbstractAddress(int number) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = "/tmp/.X11-unix/X" + std::to_string(number);
    std::memcpy(address.sun_path + 1, path.data(), path.size());
    return address;
  }
  static socklen_t AddressLength(const sockaddr_un& address) {
    return static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 +
                                  std::strlen(address.sun_path + 1));
  }
  int ConnectToRealDisplay() const {
    if (m_RealNumber < 0) return -1;
    const sockaddr_un address = AbstractAddress(m_RealNumber);
    const int server = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connect(server, reinterpret_cast<const sockaddr*>(&address), AddressLength(address)) == 0) {
      return server;
    }
    sockaddr_un file{};
    file.sun_family = AF_UNIX;
    std::strcpy(file.sun_path, address.sun_path + 1);
    if (connect(server, reinterpret_cast<const sockaddr*>(&file), sizeof file) == 0) return server;
    close(server);
    return -1;
  }
  // Accepts while not stopped: the first client is closed at once, each
  // later one is relayed to the real display until either side closes.
  void Serve() {
    while (!m_Stop) {
      pollfd waiting{m_Listener, POLLIN, 0};
      if (poll(&waiting, 1, 20) <= 0) continue;
      const int client = accept4(m_Listener, nullptr, nullptr, SOCK_CLOEXEC);
      if (client < 0) continue;
      if (m_Refused.fetch_add(1) == 0) {
        close(client);
        continue;
      }
      const int server = ConnectToRealDisplay();
      if (server >= 0) Relay(client, server);
      close(server);
      close(client);
    }
  }
  void Relay(int client, int server) {
    m_Refused.fetch_sub(1);  // only the first one counts as refused
    pollfd ends[2] = {{client, POLLIN, 0}, {server, POLLIN, 0}};
    char buffer[4096];
    while (!m_Stop) {
      if (poll(ends, 2, 20) <= 0) continue;
      for (int from = 0; from < 2; ++from) {
        if (ends[from].revents == 0) continue;
        const ssize_t got = read(ends[from].fd, buffer, sizeof buffer);
        if (got <= 0 || write(ends[1 - from].fd, buffer, static_cast<size_t>(got)) != got) return;
      }
    }
  }

  int m_RealNumber = -1;
  int m_Listener = -1;
  int m_Number = -1;
  std::atomic<bool> m_Stop{false};
  std::atomic<int> m_Refused{0};
  std::thread m_Thread;
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

TEST_F(ScreenInputTest, RefusedConnectionIsAskedAgain) {
  RefusingDisplay busy;
  ASSERT_TRUE(busy.Listens());
  const std::string real = std::getenv("DISPLAY");
  Key(XK_a, true);
  setenv("DISPLAY", busy.Name().c_str(), 1);
  const int32_t down = IsKeyDown('A');
  ReadScreenSize();
  setenv("DISPLAY", real.c_str(), 1);
  Key(XK_a, false);
  EXPECT_EQ(busy.Refused(), 1);
  EXPECT_EQ(down, 1);
  EXPECT_EQ(GetScreenWidth(), TACHYRUN_TEST_SCREEN_WIDTH);
  EXPECT_EQ(GetScreenHeight(), TACHYRUN_TEST_SCREEN_HEIGHT);
}

TEST_F(ScreenInputTest, NumbersWithoutAKeyAreNeverDown) {
  Key(XK_a, true);
  for (int32_t key : {0x00, 0x07, 0x0A, 0xFF, 0x100, -1, 0x41 + 0x10000}) {
    EXPECT_EQ(IsKeyDown(key), 0) << key;
  }
  Key(XK_a, false);
}

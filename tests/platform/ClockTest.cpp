#include "platform/Clock.h"

#include <gtest/gtest.h>

TEST(Clock, AdvancesAcrossASleep) {
  const uint32_t start = platform::TickCountMs();
  platform::SleepMs(30);
  const uint32_t elapsed = platform::TickCountMs() - start;  // wrap-safe subtraction
  EXPECT_GE(elapsed, 29u);
  EXPECT_LT(elapsed, 60000u);
}

TEST(Clock, NeverGoesBackwards) {
  uint32_t last = platform::TickCountMs();
  for (int i = 0; i < 1000; ++i) {
    const uint32_t now = platform::TickCountMs();
    EXPECT_LT(static_cast<uint32_t>(now - last), 0x80000000u);
    last = now;
  }
}

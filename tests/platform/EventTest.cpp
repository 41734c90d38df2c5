#include "platform/Event.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using platform::Event;

TEST(Event, TimedWaitOnUnsignalledEventGives258) {
  Event event(false, false);
  EXPECT_EQ(event.Wait(20), platform::kWaitTimeout);
  EXPECT_EQ(platform::kWaitTimeout, 258u);
}

TEST(Event, AutoResetReleasesOneWaitAndFallsBack) {
  Event event(false, true);
  EXPECT_EQ(event.Wait(0), platform::kWaitObject0);
  EXPECT_FALSE(event.IsSet());
  EXPECT_EQ(event.Wait(10), platform::kWaitTimeout);
}

TEST(Event, ManualResetStaysSignalledUntilReset) {
  Event event(true, false);
  event.Set();
  EXPECT_EQ(event.Wait(0), platform::kWaitObject0);
  EXPECT_EQ(event.Wait(0), platform::kWaitObject0);
  event.Reset();
  EXPECT_EQ(event.Wait(10), platform::kWaitTimeout);
}

TEST(Event, SetFromAnotherThreadWakesAnInfiniteWait) {
  Event event(false, false);
  std::atomic<uint32_t> result{99};
  std::thread waiter([&] { result = event.Wait(platform::kInfinite); });
  event.Set();
  waiter.join();
  EXPECT_EQ(result.load(), platform::kWaitObject0);
}

TEST(Event, ManualResetReleasesEveryWaiter) {
  Event event(true, false);
  std::atomic<int> woken{0};
  std::thread a([&] { woken += event.Wait(5000) == platform::kWaitObject0; });
  std::thread b([&] { woken += event.Wait(5000) == platform::kWaitObject0; });
  event.Set();
  a.join();
  b.join();
  EXPECT_EQ(woken.load(), 2);
}

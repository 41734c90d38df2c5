#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>

#include "files/WaitSignal.h"
#include "platform/Clock.h"

namespace {

// The pair is process-wide: every test starts and ends without an event.
class WaitSignalTest : public ::testing::Test {
 protected:
  void SetUp() override { CloseWaitEvent(); }
  void TearDown() override { CloseWaitEvent(); }

  // Milliseconds that WaitForSignal(timeoutMs) took; its result in *result.
  static uint32_t TimedWait(uint32_t timeoutMs, int32_t* result) {
    const uint32_t start = platform::TickCountMs();
    *result = WaitForSignal(timeoutMs);
    return platform::TickCountMs() - start;
  }

  // Polls until the waiter has counted itself, up to 10 s.
  static bool WaitUntilAsked(uint32_t asked) {
    for (int i = 0; i < 10000 && GetWaitsAsked() != asked; ++i) platform::SleepMs(1);
    return GetWaitsAsked() == asked;
  }
};

}  // namespace

TEST_F(WaitSignalTest, WithoutEventWaitGivesMinusOneAndCountsNothing) {
  int32_t result = 0;
  EXPECT_LT(TimedWait(30000, &result), 15000u) << "no event: no wait at all";
  EXPECT_EQ(result, -1);
  EXPECT_EQ(GetWaitsAsked(), 0u);
  SignalWaiter();
  EXPECT_EQ(GetWaitsAnswered(), 0u);
  EXPECT_FALSE(IsWaitEventSet());
}

TEST_F(WaitSignalTest, SignalWithNoWaitOutstandingLeavesTheEventClear) {
  CreateWaitEvent();
  SignalWaiter();
  EXPECT_FALSE(IsWaitEventSet());
  EXPECT_EQ(GetWaitsAnswered(), 0u);
  int32_t result = -1;
  EXPECT_GE(TimedWait(60, &result), 60u) << "the wait runs to its timeout";
  EXPECT_EQ(result, 0);
  EXPECT_EQ(GetWaitsAsked(), 1u);
  EXPECT_EQ(GetWaitsAnswered(), 0u);
}

TEST_F(WaitSignalTest, SignalFromAnotherThreadEndsTheWait) {
  CreateWaitEvent();
  std::atomic<int32_t> result{-2};
  std::atomic<uint32_t> took{0};
  std::thread waiter([&] {
    const uint32_t start = platform::TickCountMs();
    result = WaitForSignal(30000);
    took = platform::TickCountMs() - start;
  });
  ASSERT_TRUE(WaitUntilAsked(1));
  SignalWaiter();
  waiter.join();
  EXPECT_EQ(result, 0);
  EXPECT_LT(took.load(), 30000u) << "woken by the signal, not the timeout";
  EXPECT_EQ(GetWaitsAnswered(), 1u);
  EXPECT_TRUE(IsWaitEventSet()) << "manual reset: the event stays set";
  SignalWaiter();  // answered already: nothing happens
  EXPECT_EQ(GetWaitsAnswered(), 1u);
}

TEST_F(WaitSignalTest, SignalNeverCarriesOverToALaterWait) {
  CreateWaitEvent();
  int32_t result = -1;
  TimedWait(10, &result);  // times out; the wait stays counted as asked
  SignalWaiter();          // answers that late: the event is set now
  EXPECT_TRUE(IsWaitEventSet());
  EXPECT_EQ(GetWaitsAnswered(), 1u);
  EXPECT_GE(TimedWait(60, &result), 60u) << "the next wait clears the late signal first";
  EXPECT_EQ(GetWaitsAsked(), 2u);
}

TEST_F(WaitSignalTest, RepeatedRoundsAlternateBetweenTheThreads) {
  CreateWaitEvent();
  constexpr uint32_t kRounds = 50;
  std::thread waiter([] {
    for (uint32_t i = 0; i < kRounds; ++i) WaitForSignal(30000);
  });
  for (uint32_t round = 1; round <= kRounds; ++round) {
    ASSERT_TRUE(WaitUntilAsked(round));
    SignalWaiter();
    EXPECT_EQ(GetWaitsAnswered(), round);
  }
  waiter.join();
  EXPECT_EQ(GetWaitsAsked(), kRounds);
}

TEST_F(WaitSignalTest, CreateResetsAskedButKeepsAnswered) {
  CreateWaitEvent();
  int32_t result = -1;
  TimedWait(1, &result);
  TimedWait(1, &result);
  SignalWaiter();
  EXPECT_EQ(GetWaitsAsked(), 2u);
  EXPECT_EQ(GetWaitsAnswered(), 2u);
  CreateWaitEvent();  // the event exists: only the asked counter changes
  EXPECT_EQ(GetWaitsAsked(), 0u);
  EXPECT_EQ(GetWaitsAnswered(), 2u);
  EXPECT_TRUE(IsWaitEventSet()) << "the same event, still set";
  // asked 0 != answered 2 reads as an outstanding wait.
  SignalWaiter();
  EXPECT_EQ(GetWaitsAnswered(), 0u);
}

TEST_F(WaitSignalTest, CloseZeroesBothCountersAndForgetsTheEvent) {
  CreateWaitEvent();
  int32_t result = -1;
  TimedWait(1, &result);
  SignalWaiter();
  CloseWaitEvent();
  EXPECT_EQ(GetWaitsAsked(), 0u);
  EXPECT_EQ(GetWaitsAnswered(), 0u);
  EXPECT_FALSE(IsWaitEventSet());
  EXPECT_EQ(WaitForSignal(1000), -1);
  CloseWaitEvent();  // a second close is harmless
  CreateWaitEvent();
  EXPECT_FALSE(IsWaitEventSet()) << "a new event starts clear";
}

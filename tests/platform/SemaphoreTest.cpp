#include "platform/Semaphore.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

using platform::Semaphore;

TEST(Semaphore, EmptySemaphoreTimesOutWith258) {
  Semaphore sem(0, 10);
  EXPECT_EQ(sem.Wait(15), platform::kWaitTimeout);
}

TEST(Semaphore, PostThenWaitTakesOneCount) {
  Semaphore sem(0, 10);
  EXPECT_TRUE(sem.Post());
  EXPECT_EQ(sem.Wait(0), platform::kWaitObject0);
  EXPECT_EQ(sem.Wait(0), platform::kWaitTimeout);
}

TEST(Semaphore, CountNeverExceedsTheMaximum) {
  Semaphore sem(0, 1);
  EXPECT_TRUE(sem.Post());
  EXPECT_FALSE(sem.Post());
  EXPECT_EQ(sem.Wait(0), platform::kWaitObject0);
  EXPECT_EQ(sem.Wait(0), platform::kWaitTimeout);
}

TEST(Semaphore, PostFromAnotherThreadWakesASleeper) {
  Semaphore sem(0, 0x7FFFFFFF);
  std::atomic<uint32_t> result{99};
  std::thread sleeper([&] { result = sem.Wait(platform::kInfinite); });
  sem.Post();
  sleeper.join();
  EXPECT_EQ(result.load(), platform::kWaitObject0);
}

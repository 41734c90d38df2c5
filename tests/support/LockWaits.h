#pragma once
// Bounded checks that an operation waits for a lock held elsewhere.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include "core/DataLock.h"

namespace testsupport {

// Runs `op` on a thread while `lock` is held by the test; the thread must
// still be waiting after a short time and must finish once the lock is freed.
inline void ExpectWaitsFor(CDataLock& lock, const std::function<void()>& op) {
  lock.Acquire(77);
  std::atomic<bool> done{false};
  std::thread worker([&] {
    op();
    done = true;
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(150));
  EXPECT_FALSE(done.load());
  lock.Release();
  worker.join();
  EXPECT_TRUE(done.load());
}

}  // namespace testsupport

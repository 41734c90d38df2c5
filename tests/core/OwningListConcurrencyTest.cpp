#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "tests/core/ProbeRecords.h"

TEST(OwningListConcurrency, AddsFromSeveralThreadsAreAllKept) {
  constexpr int kThreads = 4;
  constexpr int kEach = 5000;
  Probe::s_iLive = 0;
  {
    ProbeList list;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
      threads.emplace_back([&, t] {
        for (int i = 0; i < kEach; ++i) {
          list.Add(new Probe(t, i));
          if (i % 4 == 3) list.RemoveAt(0);
        }
      });
    }
    for (auto& th : threads) th.join();
    EXPECT_EQ(list.GetCount(), kThreads * (kEach - kEach / 4));
    EXPECT_EQ(list.GetModCount(), kThreads * kEach);
    EXPECT_EQ(Probe::s_iLive, list.GetCount());
  }
  EXPECT_EQ(Probe::s_iLive, 0);
}

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <thread>
#include <vector>

#include "video/UniqueIdGenerator.h"

TEST(UniqueIdGeneratorConcurrency, RunningNumbersStayUniqueAcrossThreads) {
  constexpr int kThreads = 4;
  constexpr int kEach = 2000;
  CUniqueIdGenerator gen;
  // The text is made under the lock, so it carries each call's own number
  // even when the returned id was overtaken by another thread's.
  std::vector<std::vector<int>> numbers(kThreads);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      std::string text;
      for (int i = 0; i < kEach; ++i) {
        gen.NextId(ID_KIND_COMPONENT, &text);
        numbers[t].push_back(std::stoi(text.substr(16)));
      }
    });
  }
  for (auto& th : threads) th.join();
  std::set<int> all;
  for (const auto& list : numbers) all.insert(list.begin(), list.end());
  EXPECT_EQ(all.size(), size_t{kThreads} * kEach);
  EXPECT_EQ(*all.begin(), 1);
  EXPECT_EQ(*all.rbegin(), kThreads * kEach);
  EXPECT_EQ(gen.NextId(ID_KIND_COMPONENT, nullptr) >> 32, uint64_t{kThreads} * kEach + 1);
}

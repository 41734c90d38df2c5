#include <gtest/gtest.h>

#include <ctime>

#include "tests/video/UniqueIdGeneratorTestPeer.h"
#include "video/UniqueIdGenerator.h"

namespace {
uint32_t High(uint64_t id) {
  return static_cast<uint32_t>(id >> 32);
}
uint32_t Low(uint64_t id) {
  return static_cast<uint32_t>(id);
}
}  // namespace

TEST(UniqueIdGenerator, CountersStartAtOne) {
  CUniqueIdGenerator gen;
  UniqueIdCounters* block = CUniqueIdGeneratorTestPeer::Counters(gen);
  ASSERT_NE(block, nullptr);
  for (const uint64_t counter : block->aCounters) EXPECT_EQ(counter, 1u);
}

TEST(UniqueIdGenerator, FirstComponentIdHasOneThenTwo) {
  CUniqueIdGenerator gen;
  EXPECT_EQ(High(gen.NextId(ID_KIND_COMPONENT, nullptr)), 1u);
  EXPECT_EQ(High(gen.NextId(ID_KIND_COMPONENT, nullptr)), 2u);
  EXPECT_EQ(CUniqueIdGeneratorTestPeer::Counters(gen)->aCounters[1], 3u);
}

TEST(UniqueIdGenerator, TimelinesAndRepositoriesShareACounter) {
  CUniqueIdGenerator gen;
  EXPECT_EQ(High(gen.NextId(ID_KIND_TIMELINE, nullptr)), 1u);
  EXPECT_EQ(High(gen.NextId(ID_KIND_REPOSITORY, nullptr)), 2u);
  EXPECT_EQ(High(gen.NextId(ID_KIND_TRACK, nullptr)), 1u);                 // a counter of its own
  EXPECT_EQ(CUniqueIdGeneratorTestPeer::Counters(gen)->aCounters[4], 1u);  // used by no kind
}

TEST(UniqueIdGenerator, UnknownKindsShareCounterZero) {
  CUniqueIdGenerator gen;
  EXPECT_EQ(High(gen.NextId(13, nullptr)), 1u);
  EXPECT_EQ(High(gen.NextId(0, nullptr)), 2u);
  EXPECT_EQ(High(gen.NextId(1, nullptr)), 3u);
  EXPECT_EQ(High(gen.NextId(static_cast<uint32_t>(-1), nullptr)), 4u);
  EXPECT_EQ(High(gen.NextId(ID_KIND_COMPONENT, nullptr)), 1u);
}

TEST(UniqueIdGenerator, KindTable) {
  const int expected[] = {0, 0, 1, 2, 3, 3, 5, 6, 7, 8, 9, 10, 11, 0};
  for (uint32_t kind = 0; kind < 14; ++kind) {
    EXPECT_EQ(CUniqueIdGenerator::CounterOf(kind), expected[kind]) << kind;
  }
  EXPECT_EQ(CUniqueIdGenerator::CounterOf(0x80000000u), 0);
}

TEST(UniqueIdGenerator, IdsWithinOneMillisecondDifferOnlyInTheHighWord) {
  CUniqueIdGenerator gen;
  bool found = false;
  for (int attempt = 0; attempt < 100000 && !found; ++attempt) {
    const uint64_t a = gen.NextId(ID_KIND_TRACK, nullptr);
    const uint64_t b = gen.NextId(ID_KIND_TRACK, nullptr);
    if (Low(a) != Low(b)) continue;  // the clock ticked in between; try again
    found = true;
    EXPECT_NE(a, b);
    EXPECT_EQ(High(b), High(a) + 1);
  }
  EXPECT_TRUE(found);
}

TEST(UniqueIdGenerator, TextIsADateStampWithTheRunningNumber) {
  CUniqueIdGenerator gen;
  gen.NextId(9, nullptr);
  std::string text;
  const time_t before = std::time(nullptr);
  const uint64_t id = gen.NextId(9, &text);
  const time_t after = std::time(nullptr);
  EXPECT_EQ(High(id), 2u);
  // YYYYMMDD_hhmmss_NNNNNN
  ASSERT_EQ(text.size(), 22u) << text;
  for (size_t i : {8u, 15u}) EXPECT_EQ(text[i], '_') << text;
  for (size_t i = 0; i < 15; ++i) {
    if (i != 8) {
      EXPECT_TRUE(text[i] >= '0' && text[i] <= '9') << text;
    }
  }
  EXPECT_EQ(text.substr(16), "000002");
  char expectBefore[32], expectAfter[32];
  std::tm parts{};
  std::strftime(expectBefore, sizeof expectBefore, "%Y%m%d_%H%M%S", localtime_r(&before, &parts));
  std::strftime(expectAfter, sizeof expectAfter, "%Y%m%d_%H%M%S", localtime_r(&after, &parts));
  const std::string stamp = text.substr(0, 15);
  EXPECT_TRUE(stamp == expectBefore || stamp == expectAfter) << stamp;
}

TEST(UniqueIdGenerator, NullTextIsAllowedAndLeavesNothing) {
  CUniqueIdGenerator gen;
  EXPECT_NE(gen.NextId(ID_KIND_COMPONENT, nullptr), 0u);
}

TEST(UniqueIdGenerator, WithoutCountersEveryIdIsAllOnes) {
  CUniqueIdGenerator gen;
  UniqueIdCounters* block = CUniqueIdGeneratorTestPeer::DropCounters(gen);
  std::string text = "untouched";
  EXPECT_EQ(gen.NextId(ID_KIND_COMPONENT, &text), 0xFFFFFFFFFFFFFFFFull);
  EXPECT_EQ(gen.NextId(7, nullptr), 0xFFFFFFFFFFFFFFFFull);
  EXPECT_EQ(text, "untouched");
  delete block;
}

TEST(UniqueIdGenerator, GlobalInstanceIsReady) {
  EXPECT_NE(CUniqueIdGeneratorTestPeer::Counters(g_UniqueIdGenerator), nullptr);
  const uint64_t a = g_UniqueIdGenerator.NextId(8, nullptr);
  const uint64_t b = g_UniqueIdGenerator.NextId(8, nullptr);
  EXPECT_EQ(High(b), High(a) + 1);
}
